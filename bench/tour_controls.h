#pragma once

#include <QApplication>
#include <QDir>
#include <QWidget>
#include <stdexcept>
#include <string>

/// What the stretches of the tour look up and leave alike; a step that fails throws what it missed.
namespace kx::bench {

inline void Require(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error(what);
}

inline QWidget* Window(const char* name) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() == name) return window;
  }
  throw std::runtime_error(std::string("no window ") + name);
}

template <typename Widget>
Widget* Part(const char* window, const char* name) {
  auto* part = Window(window)->findChild<Widget*>(name);
  Require(part != nullptr, std::string("no control ") + name);
  return part;
}

}  // namespace kx::bench

#include "widgets/window_place.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QStringList>
#include <optional>

#include "platform/seams.h"
#include "widgets/form_helpers.h"
#include "widgets/open_form.h"

namespace kx {
namespace {

constexpr const char* watched_mark = "place_is_remembered";
constexpr const char* own_place_mark = "keeps_its_own_place";

struct Place {
  QRect rect;  ///< without the frame
  bool maximised = false;
};

std::string Habit_Of(const QWidget& form) { return "place/" + form.objectName().toStdString(); }

std::optional<Place> Remembered_Place(const QWidget& form) {
  if (platform::seams.desktop == nullptr) return {};
  const QStringList fields = Text(platform::seams.desktop->Remembered(Habit_Of(form))).split(';');
  if (fields.size() != 5) return {};
  const QRect rect(fields[0].toInt(), fields[1].toInt(), fields[2].toInt(), fields[3].toInt());
  return rect.isValid() ? std::optional(Place{rect, fields[4] == "1"}) : std::nullopt;
}

/// The screen on which most of @p rect lies; none when all of it lies beside the screens.
const QScreen* Screen_Under(const QRect& rect) {
  const auto area = [&rect](const QScreen* screen) {
    const QRect common = screen->availableGeometry().intersected(rect);
    return common.isEmpty() ? 0 : common.width() * common.height();
  };
  const QScreen* best = nullptr;
  for (const QScreen* screen : QGuiApplication::screens()) {
    if (area(screen) > (best == nullptr ? 0 : area(best))) best = screen;
  }
  return best;
}

void Remember_Place(const QWidget& form) {
  if (platform::seams.desktop == nullptr) return;
  const bool plain = !form.isMaximized() && !form.isMinimized() && !form.isFullScreen();
  const QRect rect = plain ? form.geometry() : form.normalGeometry();
  if (!rect.isValid()) return;
  const QString text =
      QString("%1;%2;%3;%4;%5").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
  platform::seams.desktop->Remember(Habit_Of(form), text.arg(form.isMaximized() ? 1 : 0).toStdString());
}

/// Tells when a form goes off the screen, and not when the desktop only takes it down.
class Place_Watch : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* form = qobject_cast<QWidget*>(watched);
    const bool leaves = event->type() == QEvent::Hide && !event->spontaneous();
    if (form != nullptr && leaves) Remember_Place(*form);
    return false;
  }
};

}  // namespace

bool Restore_Place(QWidget& form) {
  const auto place = Remembered_Place(form);
  const QScreen* screen = place ? Screen_Under(place->rect) : nullptr;
  if (screen == nullptr || form.property(own_place_mark).toBool()) return false;
  form.setGeometry(Inside_Screen(place->rect, screen->availableGeometry(), Frame_Of(form)));
  if (place->maximised) form.setWindowState(form.windowState() | Qt::WindowMaximized);
  return true;
}

void Remember_Place_Of(QWidget& form) {
  if (form.property(watched_mark).toBool() || form.property(own_place_mark).toBool()) return;
  form.setProperty(watched_mark, true);
  form.installEventFilter(new Place_Watch(&form));
}

void Leave_Place_To(QWidget& form) { form.setProperty(own_place_mark, true); }

}  // namespace kx

#pragma once

#include <QDir>
#include <QString>
#include <functional>

namespace kx::bench {

/// The tour's looks at engine and table together. Each throws std::runtime_error with the reason when it
/// fails.

/// Opens the log of a drive and leaves pictures and numbers of its hit map in @p out; @p answer_with tells
/// what the next file dialog gives.
void Show_Hit_Map(const QDir& out, const std::function<void(const QString&)>& answer_with);

/// While a log runs: the ignition table follows the engine, and a picture of its marks goes to @p out.
void Show_Engine_Place(const QDir& out);

}  // namespace kx::bench

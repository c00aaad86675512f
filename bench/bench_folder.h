#pragma once

#include <QDir>
#include <QString>

namespace kx::bench {

/// Makes @p work a folder to start the program in: the shipped files of @p data, and COM 9 at @p port. Enters
/// it. Throws std::runtime_error with the reason when it cannot.
void Enter_Bench_Folder(const QDir& data, const QDir& work, const QString& port);

/// The shipped data/: the program's first argument, else beside the working directory.
[[nodiscard]] QDir Data_Folder(int argc, char** argv);

}  // namespace kx::bench

#pragma once

namespace kx {

/// Stores the tune as the log's own: the section "[log_dataset]", 256 lines with a decimal number each, from
/// byte 0 on. Called at the start of a log, when the tune has just been read from the box.
void Update_Log_Dataset();

}  // namespace kx

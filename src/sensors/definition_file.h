#pragma once

namespace kx {

/// Reads preferences and definitions from the ini file: COM port, directory of the last tune, sensors, load
/// axes, presets, sensor selection, start preset and with it DatasetID. Lists without a line keep their
/// placeholder entries; a missing file and lines that cannot be used are told of in the status line, by file
/// and line. Needs start_dir and the brand's profile. Runs at start.
///
/// It lives with the sensors because this is the lowest folder that sees both the configuration store and the
/// sensors.
void Init_ini_file();

/// Reads sensors, load axes and presets again, as after a change of the file. What was chosen stays: the
/// number of each input's sensor, and the preset by its name. Without a sound file the lists stay as they
/// are, which is told once; faults of the lines are told when they have changed.
void Read_Definitions();

}  // namespace kx

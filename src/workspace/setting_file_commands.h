#pragma once

namespace kx {

/// The file menu of the main form. Open asks for a name and replaces the tune when the file is sound and the
/// user accepts its dataset; in every other case tune, name, directory, title and description stay.
void File_open_Click();

/// Writes the tune to card_data_dir + card_data_file without a question; the status line says where and when.
void File_save_Click();

/// Asks for a name, then saves there.
void File_save_As_Click();

}  // namespace kx

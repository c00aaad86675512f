#pragma once

#include <string>

namespace kx {

/// The file menu of the main form. Open asks for a name and replaces the tune when the file is sound and the
/// user accepts its dataset; in every other case tune, name, directory, title and description stay.
void File_open_Click();

/// The same for a file whose full name is known. An earlier tune is opened under a name with its time, in the
/// folder that it came from, so that no save goes over what is kept.
void Open_Setting_File(const std::string& full_name);

/// Writes the tune to card_data_dir + card_data_file without a question; the status line says where and when.
/// What the file held before, if it was something else, is then in the file of that name with "~" behind it.
void File_save_Click();

/// Asks for a name, then saves there.
void File_save_As_Click();

/// At the start of the program: offers the tune of a program that did not end in order. Opened or not, it is
/// among the earlier tunes then. From now on the tune of this program is kept while it is edited.
void Offer_Left_Tunes();

}  // namespace kx

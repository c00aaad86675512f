#pragma once

#include <string>

namespace kx {

/// Brand, titles and working directory: what the forms need before they are made.
void Prepare_Start();

/// The start of the program's logic, once the main form is made and its hooks are set: reads the
/// configuration, resets the tune and fills all views, every tab control on its first tab.
void Load_Event();

/// Opens a page of the shipped manual in the desktop's browser; a missing one is told of with its path.
void Open_Help_Page(const std::string& page);

/// The same for its first page.
void Open_Help_File();

/// Help menu: name, version, maker and site in a box; the brand's link in the desktop's browser.
void Show_About();
void Open_Help_Link();

}  // namespace kx

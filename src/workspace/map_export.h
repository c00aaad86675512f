#pragma once

#include <functional>
#include <string>

namespace kx {

/// Asks for a file and writes the map drawn last to it: as text for a name that ends in "csv", as picture for
/// one that ends in "bmp". @p picture gives the bytes of the picture file. The clipboard is empty afterwards,
/// and the status line names the file. A name of another kind and a file that cannot be written are told of
/// and change nothing.
void Export_Image_Click(const std::function<std::string()>& picture);

}  // namespace kx

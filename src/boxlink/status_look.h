#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kx {

/// How a status word of the link ended, for the eye: the word itself says more.
enum class Tone { plain, success, failure };

/// Tone of the text of `rs232_text`. A word that is under way, or none of the link's, is plain.
[[nodiscard]] Tone Tone_Of_Status(std::string_view status);

/// Numbers of the ports that a port test (`Text1`) could open, in its order; empty for any other text.
[[nodiscard]] std::vector<int> Ports_That_Work(std::string_view port_test);

}  // namespace kx

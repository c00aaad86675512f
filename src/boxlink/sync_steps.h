#pragma once

#include <string>
#include <string_view>

/// Steps that the three transfers of the synchronous engine are made of, for use inside one of them.
namespace kx::sync {

/// Asks for an image with @p command and takes its digits behind @p marker.
/// @return true when a whole and sound image came.
bool Fetch_Digits(std::string_view command, char marker, std::string& digits);

/// Opens the port and asks who is there. False when the port does not open; the answer is in Box_Info_OK.
bool Open_And_Ask();

/// The end of every read and comparison: closes the port and refreshes the views.
void Finish_Read(void (*refresh)());

void Read();

/// @return true when the box was compared, whatever came of it.
bool Verify();

void Write();

/// What a comparison with one box has come to.
enum class Verdict { equal, different, not_read };

/// Compares the slave's bytes with the tune, marks the differing ones and journals them.
[[nodiscard]] Verdict Compare_Slave();

/// True when the box has the dataset that the tune is for, or the user wants to @p go_on, a question's end,
/// all the same.
[[nodiscard]] bool Dataset_Accepted(int selected, std::string_view go_on);

}  // namespace kx::sync

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// The card path over a Chipdrive reader. Its outcome shows in txt_Chipdrive_status.
namespace kx {

extern bool Reader_Found;        ///< the reader answered the last search
extern std::string Card_Status;  ///< of the last step with a reader: status as decimal text, Todos its words
extern std::string Card_Buffer;  ///< data of the last command, 256 characters, one a byte
extern bool Chipdrive_Delay_Done;  ///< set by the tick of timer_Chipdrive

/// Statuses of the reader's library that have a meaning here.
namespace card_status {
constexpr std::int32_t done = 0;
constexpr std::int32_t no_reader = 666;  ///< also when the library is missing or fails
constexpr std::int32_t no_card = 16384;
}  // namespace card_status

/// Runs a command without data; true on status 0. Card_Status tells more.
bool Card_Command(std::string_view command);

/// Reads the card. CardByte takes its 256 bytes only when all of them have come.
bool Card_Read();

/// Writes CardByte to the card; true on status 0.
bool Card_Write();

/// Looks for the reader and sets Reader_Found; a box tells when there is none.
void Chipdrive_Connect();

/// "Find reader": the same for the user.
void Find_Chipdrive_Click();

/// "Read Card": takes the card's tune, with an undo point before it.
void Command1_Click();

/// "Write Card": writes the tune, reads the card back and compares.
void Command2_Click();

/// Ends the pause that follows a search.
void timer_Chipdrive_Tick();

/// Looks for the reader at the ports 1 and 2. Called by the main form's Timer1, which nothing enables.
void Timer1_Tick();

/// Forgets the reader and gives the timers back.
void Reset_Chipdrive();

}  // namespace kx

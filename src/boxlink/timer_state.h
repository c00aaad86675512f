#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "settings/image.h"

/// Where the timer-driven engine stands. Written by the engine only; none of it has a meaning while no
/// transfer runs but for the images, which keep what was read last.
namespace kx {

/// Where a write stands with its run. What has the word is in brackets.
enum class Tx {
  none,     ///< no run yet
  begin,    ///< the word that begins a run is to be sent (Timer_TX)
  prompt,   ///< its prompt is awaited (Timer_RX), then the offset is to be sent (Timer_TX)
  bytes,    ///< bytes are sent, one a tick (Timer_TX)
  end,      ///< "$" is sent, the end of the run is awaited (Timer_RX)
  restart,  ///< "$" is sent because the word went out twice; behind the end the word goes out anew (Timer_RX)
};
extern Tx Tx_State;
extern bool Rx_Reading;        ///< Timer_RX collects an image block; else it waits for a prompt of the box
extern std::string Rx_Text;    ///< characters of the image block so far
extern std::string Rx_Prompt;  ///< characters since the last send, while a prompt is awaited
extern std::int16_t Rx_Idle_Ticks;    ///< empty ticks left, until the box counts as gone
extern std::int16_t Rx_Silent_Ticks;  ///< empty ticks since the last send or arrival
extern bool Word_Sent_Again;          ///< the word of the run has gone out twice

extern std::string Run_List;     ///< runs to send, see run_list.h
extern std::int16_t Run_Pos;     ///< place in Run_List of the next number, from 1
extern std::uint8_t Run_Start;   ///< first byte of the run in progress
extern std::uint8_t Run_Length;  ///< its length, 1 to 250
extern std::uint8_t Run_Left;    ///< bytes of it still to send
extern Byte_Image Verify_Image;  ///< the master as read in a comparison
extern Byte_Image Slave_Image;   ///< the slave as read last, its slave mark taken off by the comparison

extern bool Slave_Needed;  ///< the slave is to be compared after the master; set by Check_Slave_Data_Strategy
extern bool Slave_Pending;  ///< a slave read starts at the end of this tick
extern bool Slave_Pass;     ///< the read in progress fetches the slave
extern bool Slave_Write;    ///< the runs go to the slave

/// A byte in which the slave differs; a row of zeros behind the first ends the table.
struct Slave_Row {
  std::uint8_t offset = 0;
  std::uint8_t value = 0;  ///< what the slave holds there
};
extern std::array<Slave_Row, map::image_size> Slave_Table;
extern std::uint8_t Slave_Run_No;  ///< runs sent to the slave since the last comparison

/// How the repair of the slave goes on.
struct Slave_Progress {
  std::size_t fewest = map::image_size;  ///< differing bytes, the fewest of all comparisons
  int fruitless = 0;                     ///< repairs in a row behind which no fewer differed
};
extern Slave_Progress Slave_Repairs;

/// Forgets a slave phase that was not brought to its end.
void Clear_Slave_Phase();

void Reset_Timer_State();

}  // namespace kx

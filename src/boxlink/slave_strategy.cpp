#include "boxlink/slave_strategy.h"

#include <string>
#include <utility>

#include "boxlink/image_block.h"
#include "boxlink/link_state.h"
#include "boxlink/protocol.h"
#include "boxlink/run_list.h"
#include "boxlink/timer_state.h"
#include "boxlink/timer_steps.h"
#include "boxlink/transfer.h"
#include "settings/message.h"

namespace kx {
namespace {

constexpr double check_limit = 0.1;  // seconds
constexpr int info_wanted = 90;      // characters of a box's information, at least

/// True when @p command brought @p wanted characters; else a box says @p error.
bool Answered(std::string_view command, int wanted, const std::string& error) {
  std::string received;
  const bool enough = Send_Wait_Rec(command, check_limit, wanted, received);
  if (!enough) Tell(error);
  Fail_If_Ended();
  return enough;
}

void Fill_Slave_Table(const std::vector<int>& offsets) {
  Slave_Table = {};
  for (std::size_t row = 0; row < offsets.size(); ++row)
    Slave_Table[row] = {static_cast<std::uint8_t>(offsets[row]), Slave_Image[offsets[row]]};
}

void End_Slave_Phase() {
  Slave_Pass = false;
  Slave_Needed = false;
}

void Report_Equal_Slave() {
  rs232_text.Set(With_Time(words::slave_written, words::dotted_end));
  timer::Send("ue");
  End_Slave_Phase();
}

/// One repair may be spoilt by the line; of a slave that does not take the bytes there would be no end.
bool Given_Up(std::size_t differing, bool repaired) {
  const bool fewer = differing < Slave_Repairs.fewest;
  if (fewer) Slave_Repairs.fewest = differing;
  Slave_Repairs.fruitless = fewer || !repaired ? 0 : Slave_Repairs.fruitless + 1;
  return Slave_Repairs.fruitless >= 2;
}

void Report_Differing_Slave(const std::vector<int>& offsets, bool repaired) {
  rs232_text.Set(words::slave_differs);
  if (Given_Up(offsets.size(), repaired)) return End_Slave_Phase();
  Write_Mode = true;
  Slave_Write = true;
  Run_List = Slave_Run_List(offsets);
  Text1.Set(Run_List);
}

}  // namespace

bool Check_Slave_Data_Strategy() {
  Slave_Needed = false;
  if (!Open_For_Transfer()) return false;
  Drop_Input();  // or the answer to "rs" would still be coming while the next question goes out
  rs232_text.Set(words::slave_check);
  if (!Answered("rs", image_block_length, "ERROR 4")) {
    if (!Open_For_Transfer()) return false;
    (void)Answered("v", info_wanted, "ERROR 5");
    Drop_Input();
    rs232_text.Set(words::second_slave_check);
    if (!Answered("rs", image_block_length, "ERROR 6")) return true;
  }
  Slave_Needed = true;
  return true;
}

void MasterSlaveCompare() {
  const bool repaired = std::exchange(Slave_Write, false);
  Slave_Image[map::slave_mode.byte] &= static_cast<std::uint8_t>(~map::slave_mode.mask);
  const auto offsets = Differing_Offsets(Current_Transfer().image, Slave_Image);
  Fill_Slave_Table(offsets);
  Slave_Run_No = 0;
  offsets.empty() ? Report_Equal_Slave() : Report_Differing_Slave(offsets, repaired);
}

}  // namespace kx

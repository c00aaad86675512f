#pragma once

#include <cstdint>
#include <string>

/// Who the connected box is. Box_Info_OK (protocol.h) tells whether the last query succeeded; the items keep
/// what the last successful one said.
namespace kx {

extern std::string Box_Firmware;   ///< text behind the banner
extern std::int32_t Box_Serial;    ///< 0 to 99999
extern std::string Box_SC_ID;      ///< dataset of the box, three characters as received
extern std::string Box_Status;     ///< three characters
extern bool Slave_Present;         ///< a slave box is connected to the box
extern bool Card_Present;          ///< a smart card is in the box's socket
extern std::string Box_Info_Text;  ///< summary for the user, or the no-answer sentence

/// What an answer says. Fields whose label is missing are empty or 0.
struct Box_Info {
  std::string firmware;
  std::int32_t serial = 0;
  std::string sc_id;
  std::string status;
  bool master_mode = false;
  bool slave_present = false;
  bool card_present = false;
};

/// True when nothing of @p answer is missing: it ends in a line feed and names the mode.
[[nodiscard]] bool Info_Complete(const std::string& answer);

/// Reads the fields by their labels, wherever in the @p answer (Latin-1) they stand.
[[nodiscard]] Box_Info Parse_Box_Info(const std::string& answer);

/// Summary of @p info, a line a fact, every line ended by CR LF.
[[nodiscard]] std::string Describe(const Box_Info& info);

/// Asks the box who it is and fills the items above. Listens for 0.05 s, which is all the time that the box
/// gets; handlers may run meanwhile. The port must be open and old text taken away.
/// Throws Failure when the device is lost, Transfer_Ended as soon as the operation is to end.
void Get_Box_Info();

/// "Info": asks the box and shows its summary. The port is left as it was found, but for one that was open
/// under another number than the chosen one.
void Connect_Info_Click();

/// The same query for a report: no box, whatever happens. Left out while an operation has the line.
void Refresh_Box_Info_Quietly();

/// "Com test": tries to open COM1 to COM40 and lists in Text1 what the system says to each.
void Command3_Click();

void Reset_Box_Info();

}  // namespace kx

#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/card_libraries.h"
#include "settings/shown_text.h"

/// The card path over a Todos reader, and the bench form frm_TodosII, whose fields it goes by. The outcome of
/// each step shows in todos::result and, as a copy, in txt_TodosStatus.
namespace kx {

/// The reader's name among those of the card service, as a part of it.
inline constexpr std::string_view todos_reader_name = "Todos Argos Mini II USB";

extern platform::Card_Context Todos_Context;  ///< of the card service, 0 is none
extern std::int32_t Todos_Card;               ///< handle of the card; has a meaning while it is connected
extern std::int32_t Todos_Powered;            ///< -1 while the card is connected and reset, else 0
extern std::int32_t Todos_ATR_Length;         ///< bytes of the last reset answer, 0 to 64
extern bool Todos_Reader_OK;                  ///< the last list of readers held a Todos reader

/// A kind of card, by its position in CardListCombo; the library knows it by that number.
struct Card_Type {
  std::string_view name;
  std::size_t pin_bytes;  ///< 0 for a card without PIN and protect bits
  std::string_view verify_success;
  std::string_view verify_fail;
  std::string_view change_success;
  std::string_view change_fail;
};

inline constexpr std::array card_types{
    Card_Type{"SLE4442", 3, " PIN Verify Success!", "PIN Verify Fail!", "Change PIN Success!",
              "Change PIN Fail"},
    Card_Type{"SLE4428", 2, " PIN Verfiy Success!", "PIN verify Error", " Change PIN Success!",
              "Change PIN failure"},
    Card_Type{"I2C_1B_MC", 0, "", "", "", ""},
    Card_Type{"I2C_2B_MC", 0, "", "", "", ""},
};

/// What the bench form's controls hold. The form follows the texts and writes what the user types; PIN bytes
/// are in no other place.
namespace todos {

extern Shown_Text TRAdd;                   ///< start of a read, decimal
extern Shown_Text ReadData;                ///< length of a read, 1 to 256
extern Shown_Text TWAdd;                   ///< start of a write, decimal
extern Shown_Text WriteData;               ///< characters of a page write, one byte each
extern Shown_Text writelength;             ///< bytes of a page write; empty means all of WriteData
extern std::array<Shown_Text, 3> pin;      ///< Text1, Text4, Text5: hex
extern std::array<Shown_Text, 3> new_pin;  ///< Text3, Text6, Text7: hex
extern Shown_Text MemAddress;              ///< address of a protect bit, decimal
extern Shown_Text MemStatus;  ///< the byte that stands there, 0 to 255, for writing its protect bit
extern Shown_Text result;
extern Shown_Text output;

extern std::size_t card_type;             ///< position in CardListCombo
extern std::vector<std::string> readers;  ///< as the service listed them last
extern int reader;                        ///< position in ReaderlistCombo, -1 without readers

/// What the chosen kind of card has, and so which controls of the form are of use.
[[nodiscard]] bool Has_Pin();
[[nodiscard]] bool ReadPBFlag();   ///< protect bits can be read
[[nodiscard]] bool WritePBFlag();  ///< protect bits can be written

/// Called when the list of readers changed.
extern std::function<void()> on_readers;

}  // namespace todos

/// The names in a list in which each is ended by NUL; a last one without it counts, an empty one does not.
[[nodiscard]] std::vector<std::string> Names_In(std::string_view list);

/// The bench form is about to be shown: lists the readers.
void Load_Todos_Form();

/// Buttons of the bench form. Each is one card operation.
void ConnectCard_Click();
void CardReset_Click();
void ComRead_Click();   ///< reads into the tune, with an undo point before it
void comwrite_Click();  ///< writes the tune as it stands, and compares
void Disconnect_Click();

/// "Find writer": connects.
void cmd_FindTodos_Click();

/// "Read Card": takes the card's tune, with an undo point before it.
void cmdReadTodos_Click();

/// "Write Card": writes the tune, reads the card back and compares.
void cmd_WriteTodos_Click();

/// "Disconnect".
void cmd_DisConnectTodos_Click();

/// Lets card and service go without a word. Called when the program ends.
void Leave_Todos();

/// Back to the first state, the fields too.
void Reset_Todos();

}  // namespace kx

#pragma once

#include <array>
#include <string_view>

#include "boxlink/transfer.h"
#include "cards/box_card.h"
#include "cards/card_texts.h"
#include "cards/chipdrive.h"
#include "cards/todos.h"

namespace kx {

/// A button of a card frame. While it is pressed, @p placeholder shows in the status line of the link.
struct Card_Button {
  std::string_view name;
  std::string_view caption;
  std::string_view tip;
  std::string_view placeholder;
  void (*handler)();
};

/// A way to a card: what its frame offers, and where its outcome shows.
struct Card_Path {
  std::string_view interface_word;  ///< the interface option that it belongs to
  std::string_view status_name;     ///< the control of its status
  Shown_Text* status;
  void (*read)();
  void (*write)();
  std::array<Card_Button, 4> buttons;  ///< a row without a name is none
  std::string_view about;              ///< what it needs
};

/// In the order of interface_options.
inline constexpr std::array card_paths{
    Card_Path{"SC_Reader",
              "txt_Chipdrive_status",
              &txt_Chipdrive_status,
              Command1_Click,
              Command2_Click,
              {{{"Find_Chipdrive", "Find reader", "Look for the Chipdrive at all serial ports", "",
                 Find_Chipdrive_Click},
                {"Command1", "Read Card", "Read the tune from the card, 256 bytes; can be undone", "<------>",
                 Command1_Click},
                {"Command2", "Write Card", "Write the tune to the card, 256 bytes, and compare", "<------>",
                 Command2_Click}}},
              "Needs the library SCARD32 of the reader's maker in the folder of this program."},
    Card_Path{"KX_MapCard",
              "kx_crw_text",
              &kx_crw_text,
              Command6_Click,
              Command4_Click,
              {{{"Command5", "Check if card present", "Ask the box whether a card is in its socket",
                 "< ... >", Command5_Click},
                {"Command6", "Read Card", "Read the tune that the box has taken from its card, 256 bytes", "",
                 Command6_Click},
                {"Command4", "Write to card in box",
                 "Write bytes 1 to 255 of the tune to the card in the box", "< ... >", Command4_Click},
                {"Stop_Card", "Stop", "End the writing of a card before its time", "", End_Transfer}}},
              "The box takes the tune of its card when it is switched on. Byte 0 of a card is not written."},
    Card_Path{
        "TodosII_Reader",
        "txt_TodosStatus",
        &txt_TodosStatus,
        cmdReadTodos_Click,
        cmd_WriteTodos_Click,
        {{{"cmd_FindTodos", "Find writer", "Connect to the card in the Todos reader", "< Searching... >",
           cmd_FindTodos_Click},
          {"cmdReadTodos", "Read Card", "Read the tune from the card, 256 bytes; can be undone", "< ..... >",
           cmdReadTodos_Click},
          {"cmd_WriteTodos", "Write Card", "Write the tune to the card, 256 bytes, and compare", "< ..... >",
           cmd_WriteTodos_Click},
          {"cmd_DisConnectTodos", "Disconnect", "Let the card go before it is taken out", "< ..... >",
           cmd_DisConnectTodos_Click}}},
        "Needs the card service of the system, and the library AgmSyn of the reader's maker in the folder of "
        "this program."},
};

/// All of the card paths as before the first operation.
void Reset_Cards();

}  // namespace kx

#include "workspace/panels/Communication_Panel.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <array>

#include "boxlink/box_info.h"
#include "boxlink/line_log.h"
#include "boxlink/link_texts.h"
#include "boxlink/preferences.h"
#include "boxlink/protocol.h"
#include "boxlink/sync_engine.h"
#include "boxlink/timer_engine.h"
#include "boxlink/transfer.h"
#include "settings/brand.h"
#include "settings/refresh.h"
#include "widgets/form_helpers.h"
#include "workspace/update_views.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

constexpr int places_a_row = 6;

/// A button of the box side. The placeholder shows in the status line while the button is pressed.
struct Link_Button {
  const char* name;
  const char* caption;
  const char* tip;
  std::string_view placeholder;
  void (*handler)();
  int places = 2;  ///< of the six in a row of buttons
};

constexpr std::array link_buttons{
    Link_Button{"Read_Settings", "Read", "Read the tune out of the box", words::transfer_pressed,
                Read_Settings_Click},
    Link_Button{"Write_Settings", "Write", "Write the bytes that differ to the box, then verify",
                words::transfer_pressed, Write_Settings_Click},
    Link_Button{"Verify_Settings", "Verify", "Compare the tune with the box", words::transfer_pressed,
                Verify_Settings_Click},
    Link_Button{"Connect_Info", "Info", "Ask the box who it is", words::info_pressed, Connect_Info_Click},
    Link_Button{"Open_Box_Port", "Open port", "Open the box's port and leave it open", "", Open_Box_Port},
    Link_Button{"Com_knapp2", "Close port", "Close the box's port; ends a transfer", "", Com_knapp2_Click},
    Link_Button{"Com_knapp5", "Read settings old", "Read by the second, timer-driven way",
                words::info_pressed, Com_knapp5_Click, 3},
    Link_Button{"Com_knapp3", "Write settings old", "Write by the second, timer-driven way; repairs a slave",
                words::info_pressed, Com_knapp3_Click, 3},
    Link_Button{"Com_knapp4", "Verify old", "Compare by the second, timer-driven way", words::info_pressed,
                Com_knapp4_Click, 3},
    Link_Button{"Command3", "Com test", "Try to open each of the ports 1 to 40", "", Command3_Click, 3},
    Link_Button{"Export_Line_Log", "Export line log", "Save every byte sent and received to a text file", "",
                Export_Line_Log_Click, 6},
};

/// A read-only text view of a core text that keeps its end in sight.
QPlainTextEdit* Text_View(const QString& name, Shown_Text& text) {
  auto* view = new QPlainTextEdit;
  view->setObjectName(name);
  view->setReadOnly(true);
  Follow(view, text, [](QPlainTextEdit* shown, const QString& all) {
    shown->setPlainText(all);
    shown->moveCursor(QTextCursor::End);
  });
  return view;
}

QLineEdit* Status_Line() {
  auto* line = new QLineEdit;
  line->setObjectName("rs232_text");
  line->setReadOnly(true);
  Follow(line, rs232_text, [](QLineEdit* shown, const QString& text) {
    shown->setText(text);
    shown->setCursorPosition(0);
  });
  Follow(line, rs232_tool_tip, [](QLineEdit* shown, const QString& text) { shown->setToolTip(text); });
  return line;
}

}  // namespace

Communication_Panel::Communication_Panel(QWidget* parent) : QTabWidget(parent) {
  setObjectName("SSTab_Communication");
  addTab(Make_Card_Tab(), Text(Card_Tab_Caption));
  addTab(Make_Box_Tab(), Text(Box_Tab_Caption));
  connect(this, &QTabWidget::currentChanged, this, [](int tab) {
    if (!Undo_Busy) Guarded([tab] { Communication_Tab_Changed(tab); });
  });
}

QWidget* Communication_Panel::Make_Buttons() {
  auto* buttons = new QWidget;
  auto* layout = new QGridLayout(buttons);
  layout->setContentsMargins(0, 0, 0, 0);
  int place = 0;
  for (const Link_Button& row : link_buttons) {
    const int width = row.places;
    auto* button = new QPushButton(row.caption);
    button->setObjectName(row.name);
    button->setToolTip(row.tip);
    button->setFocusPolicy(Qt::TabFocus);  // a click leaves the focus in the grid
    if (!row.placeholder.empty()) {
      connect(button, &QPushButton::pressed, this, [&row] { rs232_text.Set(row.placeholder); });
    }
    On_Click(button, row.handler);
    // "Close port" stays: it is the way out of a transfer that hangs.
    if (row.handler != Com_knapp2_Click) transfer_buttons_.push_back(button);
    layout->addWidget(button, place / places_a_row, place % places_a_row, 1, width);
    place += width;
  }
  on_transfer_change = [alive = QPointer(this)] {
    if (alive) alive->Enable_Transfers(!Transfer_Running());
  };
  return buttons;
}

void Communication_Panel::Enable_Transfers(bool enabled) {
  for (QPushButton* button : transfer_buttons_) button->setEnabled(enabled);
}

QWidget* Communication_Panel::Make_Card_Tab() {
  auto* side = new QWidget;
  auto* layout = new QVBoxLayout(side);
  for (const Interface_Option& option : interface_options) {
    auto* frame = new QGroupBox(Text(option.caption));
    frame->setObjectName(Text(option.frame));
    auto* about = new QLabel(
        "The chosen way to a card. Ctrl+T chooses the next one.\n\n"
        "This version moves tunes as files and over the line of the KX-box; it reads and writes no cards.");
    about->setWordWrap(true);
    (new QVBoxLayout(frame))->addWidget(about);
    layout->addWidget(frame);
    card_frames_.push_back(frame);
  }
  layout->addStretch(1);
  return side;
}

QWidget* Communication_Panel::Make_Box_Tab() {
  auto* box = new QWidget;
  auto* layout = new QVBoxLayout(box);
  layout->addWidget(Make_Buttons());
  layout->addWidget(Status_Line());
  layout->addWidget(Text_View("Debug_txt", Debug_txt), 3);
  auto* port_test = Text_View("Text1", Text1);
  port_test->setPlaceholderText("Result of the port test");
  layout->addWidget(port_test, 1);
  return box;
}

void Communication_Panel::Show_Values() {
  for (std::size_t i = 0; i < card_frames_.size(); ++i) {
    card_frames_[i]->setVisible(static_cast<int>(i) == card_frame);
  }
}

void Communication_Panel::Show_Layout() {
  const QSignalBlocker quiet(this);
  setCurrentIndex(Communication_Tab());
}

}  // namespace kx

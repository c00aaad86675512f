#include "workspace/panels/Communication_Panel.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QSignalBlocker>
#include <array>

#include "boxlink/box_info.h"
#include "boxlink/line_log.h"
#include "boxlink/link_texts.h"
#include "boxlink/preferences.h"
#include "boxlink/protocol.h"
#include "boxlink/status_look.h"
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

/// A button of the box side. The placeholder shows in the status line while the button is pressed.
struct Link_Button {
  const char* name;
  const char* caption;
  const char* tip;
  std::string_view placeholder;
  void (*handler)();
  const char* keys = "";  ///< beside the letter of the caption
};

constexpr std::array main_buttons{
    Link_Button{"Read_Settings", "&Read", "Read the tune out of the box (Ctrl+F5)", words::transfer_pressed,
                Read_Settings_Click, "Ctrl+F5"},
    Link_Button{"Write_Settings", "&Write", "Write the bytes that differ to the box, then verify (Ctrl+F6)",
                words::transfer_pressed, Write_Settings_Click, "Ctrl+F6"},
    Link_Button{"Verify_Settings", "&Verify", "Compare the tune with the box (F7)", words::transfer_pressed,
                Verify_Settings_Click, "F7"},
    Link_Button{"Connect_Info", "&Info", "Ask the box who it is", words::info_pressed, Connect_Info_Click},
};

constexpr std::array further_buttons{
    Link_Button{"Open_Box_Port", "&Open port", "Open the box's port and leave it open", "", Open_Box_Port},
    Link_Button{"Com_knapp2", "&Close port", "Close the box's port; ends a transfer", "", Com_knapp2_Click},
    Link_Button{"Com_knapp5", "Read settings ol&d", "Read by the second, timer-driven way",
                words::info_pressed, Com_knapp5_Click},
    Link_Button{"Com_knapp3", "Write settin&gs old", "Write by the second, timer-driven way; repairs a slave",
                words::info_pressed, Com_knapp3_Click},
    Link_Button{"Com_knapp4", "Verif&y old", "Compare by the second, timer-driven way", words::info_pressed,
                Com_knapp4_Click},
    Link_Button{"Command3", "Com test", "Try to open each of the ports 1 to 40", "", Command3_Click},
    Link_Button{"Export_Line_Log", "E&xport line log", "Save every byte sent and received to a text file", "",
                Export_Line_Log_Click},
};

constexpr int main_buttons_a_row = 4;
constexpr int further_buttons_a_row = 2;

/// Colour of the status line's text, readable on light and on dark paper. Invalid for a plain word.
QColor Tone_Colour(Tone tone, const QColor& paper) {
  if (tone == Tone::plain) return {};
  const bool dark = paper.lightness() < 128;
  if (tone == Tone::success) return dark ? QColor(110, 220, 130) : QColor(0, 105, 40);
  return dark ? QColor(255, 130, 120) : QColor(180, 0, 20);
}

/// A read-only text view of a core text that keeps its end in sight.
QPlainTextEdit* Text_View(const QString& name, Shown_Text& text) {
  auto* view = new QPlainTextEdit;
  view->setObjectName(name);
  view->setReadOnly(true);
  view->setMinimumHeight(view->fontMetrics().height() * 4);
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
    QPalette colours;
    const QColor ink = Tone_Colour(Tone_Of_Status(text.toStdString()), colours.color(QPalette::Base));
    if (ink.isValid()) colours.setColor(QPalette::Text, ink);
    shown->setPalette(colours);
  });
  return line;
}

/// Why the port did not open and what helps: in sight as long as it holds.
QLabel* Help_Line() {
  QLabel* help = Named_Text("rs232_help");
  help->setTextInteractionFlags(Qt::TextSelectableByMouse);
  Follow(help, rs232_tool_tip, [](QLabel* shown, const QString& text) {
    shown->setText(text);
    shown->setVisible(!text.isEmpty());
  });
  return help;
}

/// The result of the port test: forty lines, so the ports that work are named above them, too.
QWidget* Port_Test() {
  auto* test = new QWidget;
  QLabel* found = Named_Text("ports_that_work");
  QPlainTextEdit* view = Text_View("Text1", Text1);
  view->setPlaceholderText("Result of the port test");
  QObject::connect(view, &QPlainTextEdit::textChanged, found, [view, found] {
    QStringList names;
    for (const int port : Ports_That_Work(view->toPlainText().toStdString()))
      names << "COM" + QString::number(port);
    found->setText("Ports that work: " + names.join(", "));
    found->setVisible(!names.isEmpty());
  });
  found->hide();
  auto* layout = new QVBoxLayout(test);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(found);
  layout->addWidget(view, 1);
  return test;
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

template <typename Rows>
void Communication_Panel::Add_Buttons(QGridLayout* layout, const Rows& rows, int a_row) {
  int place = 0;
  for (const Link_Button& row : rows) {
    auto* button = new QPushButton(row.caption);
    button->setObjectName(row.name);
    button->setToolTip(row.tip);
    button->setFocusPolicy(Qt::TabFocus);  // a click leaves the focus in the grid
    button->setMinimumWidth(button->fontMetrics().averageCharWidth() * 9);
    if (!row.placeholder.empty()) {
      connect(button, &QPushButton::pressed, this, [&row] { rs232_text.Set(row.placeholder); });
    }
    On_Click(button, row.handler);
    // On this control, which is on show while the button's side may not be.
    if (*row.keys != 0)
      connect(new QShortcut(QKeySequence(row.keys), this), &QShortcut::activated, button,
              &QPushButton::click);
    // "Close port" stays: it is the way out of a transfer that hangs.
    if (row.handler != Com_knapp2_Click) transfer_buttons_.push_back(button);
    // The last one fills its row.
    const bool last = &row == &rows.back();
    layout->addWidget(button, place / a_row, place % a_row, 1, last ? a_row - place % a_row : 1);
    ++place;
  }
}

QWidget* Communication_Panel::Make_Main_Buttons() {
  auto* buttons = new QWidget;
  auto* layout = new QGridLayout(buttons);
  layout->setContentsMargins(0, 0, 0, 0);
  Add_Buttons(layout, main_buttons, main_buttons_a_row);
  on_transfer_change = [alive = QPointer(this)] {
    if (alive) alive->Enable_Transfers(!Transfer_Running());
  };
  return buttons;
}

QWidget* Communication_Panel::Make_Further_Buttons() {
  auto* group = new QGroupBox("Port, old engine and tests");
  group->setObjectName("further_link_frame");
  Add_Buttons(new QGridLayout(group), further_buttons, further_buttons_a_row);
  return group;
}

/// The focus must not come to "Close port", or Space pressed twice on "Write" would end the write. It rests
/// on the status line that is on show.
void Communication_Panel::Rest_Focus() {
  for (QPushButton* button : transfer_buttons_) {
    auto* frame = qobject_cast<Card_Frame*>(button->parentWidget());
    focus_.Rest(button, frame == nullptr ? status_line_ : frame->Status_Line());
  }
}

void Communication_Panel::Enable_Transfers(bool enabled) {
  if (!enabled) Rest_Focus();
  for (QPushButton* button : transfer_buttons_) button->setEnabled(enabled);
  if (enabled) focus_.Give_Back();
  emit Transfers_Enabled(enabled);
}

QWidget* Communication_Panel::Make_Card_Tab() {
  auto* side = new QWidget;
  auto* layout = new QVBoxLayout(side);
  for (std::size_t i = 0; i < interface_options.size(); ++i) {
    const Interface_Option& option = interface_options[i];
    auto* frame = new Card_Frame(Text(option.frame), Text(option.caption), card_paths[i]);
    layout->addWidget(frame);
    card_frames_.push_back(frame);
    const auto& buttons = frame->Transfer_Buttons();
    transfer_buttons_.insert(transfer_buttons_.end(), buttons.begin(), buttons.end());
  }
  layout->addStretch(1);
  return side;
}

QWidget* Communication_Panel::Make_Box_Tab() {
  auto* box = new QWidget;
  auto* layout = new QVBoxLayout(box);
  status_line_ = Status_Line();
  layout->addWidget(Make_Main_Buttons());
  layout->addWidget(status_line_);
  layout->addWidget(Help_Line());
  layout->addWidget(Make_Further_Buttons());
  layout->addWidget(Text_View("Debug_txt", Debug_txt), 3);
  layout->addWidget(Port_Test(), 2);
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

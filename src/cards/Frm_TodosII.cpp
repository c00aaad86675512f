#include "cards/Frm_TodosII.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QShowEvent>
#include <QVBoxLayout>

#include "cards/todos.h"
#include "cards/todos_bench.h"
#include "settings/brand.h"
#include "widgets/form_helpers.h"
#include "widgets/number_box.h"
#include "widgets/scroll_page.h"
#include "widgets/wheel_guard.h"

namespace kx {
namespace {

constexpr int reader_width_in_characters = 28;
constexpr int pin_width_in_characters = 5;
constexpr int output_lines = 8;

constexpr std::array<const char*, 3> pin_names{"Text1", "Text4", "Text5"};
constexpr std::array<const char*, 3> new_pin_names{"Text3", "Text6", "Text7"};

/// A frame of rows: a label and what stands behind it.
struct Frame {
  explicit Frame(const char* title) : box(new QGroupBox(title)), rows(new QGridLayout(box)) {}
  void Add(const QString& label, QWidget* control) {
    const int row = rows->rowCount();
    auto* text = new QLabel(label);
    text->setBuddy(control);
    rows->addWidget(text, row, 0);
    rows->addWidget(control, row, 1);
  }
  void Add_Line(std::initializer_list<QWidget*> controls) {
    auto* line = new QHBoxLayout;
    for (QWidget* control : controls) line->addWidget(control);
    rows->addLayout(line, rows->rowCount(), 0, 1, 2);
  }
  QGroupBox* box;
  QGridLayout* rows;
};

QLineEdit* Pin_Byte(const char* name, Shown_Text& text, const QString& what) {
  auto* box = Typed_Number(name, text, what + ", two hex digits (00 to FF)");
  box->setFixedWidth(box->fontMetrics().averageCharWidth() * pin_width_in_characters + 12);
  return box;
}

QComboBox* List(const char* name, const char* tip) {
  auto* list = new QComboBox;
  list->setObjectName(name);
  list->setToolTip(tip);
  return list;
}

}  // namespace

frm_TodosII::frm_TodosII(QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName("frm_TodosII");
  setWindowTitle(Text(Title_Prefix + "Todos II settings"));
  auto* page = new QWidget;
  auto* columns = new QGridLayout(page);
  columns->addWidget(Make_Card_Frame(), 0, 0);
  columns->addWidget(Make_Read_Frame(), 1, 0);
  columns->addWidget(Make_Write_Frame(), 2, 0);
  columns->addWidget(Make_Pin_Frame(), 0, 1);
  columns->addWidget(Make_Protect_Frame(), 1, 1);
  columns->addWidget(Make_Outcome(), 2, 1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(new Scroll_Page(page));
  Guard_Wheels_In(this);
  todos::on_readers = [alive = QPointer(this)] {
    if (alive) alive->Show_Readers();
  };
  Show_Readers();
  Show_Type();
}

QPushButton* frm_TodosII::Add_Button(const char* name, const char* caption, const char* tip,
                                     void (*handler)()) {
  auto* button = new QPushButton(caption);
  button->setObjectName(name);
  button->setToolTip(tip);
  On_Click(button, handler);
  buttons_.push_back(button);
  return button;
}

QWidget* frm_TodosII::Make_Card_Frame() {
  Frame frame("Reader and card");
  ReaderlistCombo_ = List("ReaderlistCombo", "Reader to use, as the card service lists them");
  ReaderlistCombo_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  ReaderlistCombo_->setMinimumContentsLength(reader_width_in_characters);
  ReaderlistCombo_->setPlaceholderText("No reader");
  connect(ReaderlistCombo_, &QComboBox::activated, this, [](int chosen) { todos::reader = chosen; });
  CardListCombo_ = List("CardListCombo", "Kind of card; a MapCard is an SLE4442");
  for (const Card_Type& type : card_types) CardListCombo_->addItem(Text(type.name));
  connect(CardListCombo_, &QComboBox::activated, this, [this](int chosen) {
    todos::card_type = static_cast<std::size_t>(chosen);
    Show_Type();
  });
  frame.Add("Reader", ReaderlistCombo_);
  frame.Add("Card", CardListCombo_);
  frame.Add_Line(
      {Add_Button("ConnectCard", "Connect", "Connect to the card and power it", ConnectCard_Click),
       Add_Button("CardReset", "Reset", "Reset the connected card and show its answer", CardReset_Click),
       Add_Button("Disconnect", "Disconnect", "Let the card go before it is taken out", Disconnect_Click)});
  return frame.box;
}

QWidget* frm_TodosII::Make_Read_Frame() {
  Frame frame("Read into the tune");
  frame.Add("Start address", Typed_Number("TRAdd", todos::TRAdd, "First byte to read (0 to 65535)"));
  frame.Add("Length", Typed_Number("ReadData", todos::ReadData, "Bytes to read (1 to 256)"));
  frame.Add_Line(
      {Add_Button("ComRead", "Read", "Read these bytes into the tune, from its byte 0 on; can be undone",
                  ComRead_Click)});
  return frame.box;
}

QWidget* frm_TodosII::Make_Write_Frame() {
  Frame frame("Write");
  frame.Add("Start address", Typed_Number("TWAdd", todos::TWAdd, "First byte to write (0 to 65535)"));
  frame.Add_Line({Add_Button("comwrite", "Write tune",
                             "Write the 256 bytes of the tune as they stand from there on, and compare",
                             comwrite_Click)});
  auto* data =
      Typed_Number("WriteData", todos::WriteData, "Characters to write, one byte each (Windows-1252)");
  data->setAlignment(Qt::AlignLeft);
  frame.Add("Page data", data);
  frame.Add("Page length", Typed_Number("writelength", todos::writelength,
                                        "Bytes of the page data to write (1 to all; empty is all)"));
  frame.Add_Line({Add_Button("Pagewrite", "Write page", "Write the page data from the start address on",
                             Pagewrite_Click)});
  frame.rows->setRowStretch(frame.rows->rowCount(), 1);
  return frame.box;
}

/// The PIN is shown as it is typed and kept nowhere else.
QWidget* frm_TodosII::Make_Pin_Frame() {
  Frame frame("PIN");
  auto* present = new QWidget;
  new_pin_ = new QWidget;
  auto* present_line = new QHBoxLayout(present);
  auto* new_line = new QHBoxLayout(new_pin_);
  for (QHBoxLayout* line : {present_line, new_line}) line->setContentsMargins(0, 0, 0, 0);
  for (std::size_t i = 0; i < pin_names.size(); ++i) {
    const QString number = QString::number(i + 1);
    present_line->addWidget(Pin_Byte(pin_names.at(i), todos::pin.at(i), "PIN byte " + number));
    new_line->addWidget(Pin_Byte(new_pin_names.at(i), todos::new_pin.at(i), "New PIN byte " + number));
  }
  third_pin_bytes_ = {present->findChild<QLineEdit*>("Text5"), new_pin_->findChild<QLineEdit*>("Text7")};
  QPushButton* verify = Add_Button("ComChp", "Verify PIN",
                                   "Present the PIN; three wrong ones lock the card for good", ComChp_Click);
  QPushButton* change =
      Add_Button("change", "Change PIN", "Present the PIN and give the card the new one", change_Click);
  by_type_ = {{verify, todos::Has_Pin}, {change, todos::Has_Pin}};
  present_line->addWidget(verify, 1);
  new_line->addWidget(change, 1);
  auto* Check1 = new QCheckBox("Change PIN");
  Check1->setObjectName("Check1");
  Check1->setToolTip("Show the boxes of a new PIN");
  connect(Check1, &QCheckBox::toggled, new_pin_, &QWidget::setVisible);
  new_pin_->setVisible(false);
  frame.Add_Line({present});
  frame.Add_Line({Check1});
  frame.Add_Line({new_pin_});
  frame.rows->setRowStretch(frame.rows->rowCount(), 1);
  return frame.box;
}

QWidget* frm_TodosII::Make_Protect_Frame() {
  Frame frame("Protect bits");
  frame.Add("Address", Typed_Number("MemAddress", todos::MemAddress,
                                    "Byte whose protect bit is meant (0 to 31 on an SLE4442)"));
  frame.Add("Data", Typed_Number("MemStatus", todos::MemStatus,
                                 "The byte that stands there (0 to 255); only then it is protected"));
  QPushButton* read = Add_Button("ReadPB", "Read bit", "Read the protect bit: 0 is protected", ReadPB_Click);
  QPushButton* write = Add_Button("WritePB", "Protect byte", "Protect the byte for good", WritePB_Click);
  by_type_.push_back({read, todos::ReadPBFlag});
  by_type_.push_back({write, todos::WritePBFlag});
  frame.Add_Line({read, write});
  return frame.box;
}

QWidget* frm_TodosII::Make_Outcome() {
  Frame frame("Outcome");
  result_ = new QLineEdit;
  result_->setObjectName("result");
  result_->setReadOnly(true);
  result_->setToolTip("Outcome of the last step");
  Follow(result_, todos::result, [](QLineEdit* line, const QString& text) { line->setText(text); });
  auto* output = new QPlainTextEdit;
  output->setObjectName("output");
  output->setReadOnly(true);
  output->setToolTip("Bytes read or written, 0 to 255 each, or the card's reset answer in hex");
  output->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  output->setMinimumHeight(output->fontMetrics().lineSpacing() * output_lines);
  Follow(output, todos::output, [](QPlainTextEdit* view, const QString& text) { view->setPlainText(text); });
  frame.Add_Line({result_});
  frame.Add_Line({output});
  return frame.box;
}

void frm_TodosII::Show_Readers() {
  ReaderlistCombo_->clear();
  for (const std::string& name : todos::readers) ReaderlistCombo_->addItem(Text(name));
  ReaderlistCombo_->setCurrentIndex(todos::reader);
}

/// Cards without PIN and protect bits have no use for those buttons, some PINs none for a third byte.
void frm_TodosII::Show_Type() {
  const Card_Type& type = card_types.at(todos::card_type);
  CardListCombo_->setCurrentIndex(static_cast<int>(todos::card_type));
  for (const Button_By_Type& row : by_type_) row.button->setEnabled(idle_ && row.of_use());
  for (QWidget* box : third_pin_bytes_) box->setEnabled(type.pin_bytes != 2);
}

void frm_TodosII::Enable_Buttons(bool enabled) {
  idle_ = enabled;
  for (QPushButton* button : buttons_) {
    if (!enabled) focus_.Rest(button, result_);
  }
  for (QPushButton* button : buttons_) button->setEnabled(enabled);
  Show_Type();
  if (enabled) focus_.Give_Back();
}

void frm_TodosII::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!event->spontaneous()) Guarded(Load_Todos_Form);
}

}  // namespace kx

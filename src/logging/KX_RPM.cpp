#include "logging/KX_RPM.h"

#include <QMenuBar>
#include <QVBoxLayout>

#include "logging/chart_export.h"
#include "logging/log_signals.h"
#include "logging/log_state.h"
#include "logging/panels/Log_Stretch.h"
#include "widgets/form_helpers.h"

namespace kx {
namespace {

constexpr int lines_of_values = 4;

/// Of the stretch, the first row is left out.
int First_Row() { return Log_Chart_First + 1; }

}  // namespace

KX_RPM::KX_RPM(QWidget* parent)
    : QMainWindow(parent),
      MSChart2_(new Log_Chart("MSChart2", Log_Chart::Gestures::read_out)),
      line_data_(new QPlainTextEdit) {
  setObjectName("KX_RPM");
  setWindowTitle("RPM graph");
  MSChart2_->setToolTip(
      "The ticked signals of the log window over engine speed, rpm. Click at a line to read it.");
  line_data_->setObjectName("txt_LineData");
  line_data_->setReadOnly(true);
  line_data_->setToolTip("Values of the ticked signals where you clicked");
  line_data_->setFixedHeight(fontMetrics().lineSpacing() * lines_of_values + 10);
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(MSChart2_, 1);
  layout->addWidget(line_data_);
  setCentralWidget(page);
  Make_Menu();
  connect(MSChart2_, &Log_Chart::Point_Picked, this, [this](std::size_t index) {
    Guarded([=, this] { Show_All_Point_Values(First_Row() + static_cast<int>(index)); });
  });
  resize(fontMetrics().averageCharWidth() * 110, fontMetrics().height() * 32);
  Clear_LineTextWindow();
  Show_RPM();
}

void KX_RPM::Make_Menu() {
  QMenu* file = menuBar()->addMenu("&File");
  QAction* save = file->addAction("&Export chart...");
  save->setObjectName("mnu_export");
  On_Trigger(save, [this] {
    Export_Chart(Point_Head::rpm,
                 [this](const std::string& format) { return Picture_Of(*MSChart2_, Text(format)); });
  });
  QAction* paper = file->addAction("&Print...");
  paper->setObjectName("mnu_Print");
  paper->setShortcut(QKeySequence::Print);
  On_Trigger(paper, [this] { Print_With_Dialog(*MSChart2_, this); });
}

void KX_RPM::Show_RPM() {
  const Log_Stretch stretch(First_Row(), Log_Chart_Last);
  MSChart2_->Show(stretch.Column(Slot_Of(Log_Signal::RPM)), "Engine speed [rpm]", stretch.Ticked(), {}, {},
                  no_signal_text);
  Show_Mark();
}

void KX_RPM::Forget_Point() {
  point_.reset();
  Clear_LineTextWindow();
  Show_Mark();
}

void KX_RPM::Show_Mark() {
  const bool shown = point_ && *point_ >= First_Row() && *point_ <= Log_Chart_Last;
  MSChart2_->Mark(shown ? std::optional(static_cast<std::size_t>(*point_ - First_Row())) : std::nullopt);
}

void KX_RPM::Clear_LineTextWindow() { line_data_->setPlainText(line_data_hint); }

void KX_RPM::Show_All_Point_Values(int row) {
  point_ = row;
  line_data_->setPlainText(Text(Point_Values(row, Point_Head::rpm)));
  Show_Mark();
}

}  // namespace kx

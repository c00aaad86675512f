#include "logging/panels/Log_Live_Panel.h"

#include <QGridLayout>
#include <QHBoxLayout>

#include "logging/live_log.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "widgets/form_helpers.h"

namespace kx {
namespace {

constexpr int alert_points = 24;
constexpr int no_connection_points = 14;  ///< two lines, as high as one of the other
constexpr int bold_from_points = 14;
constexpr int start_width_in_characters = 24;

QLabel* Alert(const QString& name, const char* text, int points) {
  auto* alert = new QLabel(QString(text).remove('\r'));
  alert->setObjectName(name);
  alert->setAlignment(Qt::AlignCenter);
  alert->setAutoFillBackground(true);
  QFont large = alert->font();
  large.setPointSize(points);
  large.setBold(true);
  alert->setFont(large);
  alert->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  alert->hide();
  return alert;
}

void Colour(QLabel& alert, Qt::GlobalColor ink, Qt::GlobalColor paper) {
  QPalette colours = alert.palette();
  if (colours.color(QPalette::Window) == QColor(paper)) return;
  colours.setColor(QPalette::WindowText, ink);
  colours.setColor(QPalette::Window, paper);
  alert.setPalette(colours);
}

}  // namespace

Log_Live_Panel::Log_Live_Panel(Setting_Controls& settings, QWidget* parent)
    : QWidget(parent),
      cmd_Open_Com_(new QPushButton),
      cmd_Clear_Logg_(new QPushButton("Clear log")),
      txt_Logging_alert_(Alert("txt_Logging_alert", logging_alert_text, alert_points)),
      txt_NoConnection_alert_(
          Alert("txt_NoConnection_alert", no_connection_alert_text, no_connection_points)) {
  cmd_Open_Com_->setObjectName("cmd_Open_Com");
  cmd_Open_Com_->setToolTip("Start a log of what the box sends, or stop it");
  cmd_Open_Com_->setFixedWidth(fontMetrics().averageCharWidth() * start_width_in_characters);
  cmd_Open_Com_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  On_Click(cmd_Open_Com_, cmd_Open_Com_Click);
  cmd_Clear_Logg_->setObjectName("cmd_Clear_Logg");
  cmd_Clear_Logg_->setToolTip("Empty the log on show, after a question when it is not saved");
  On_Click(cmd_Clear_Logg_, [this] {
    cmd_Clear_Logg_Click();
    if (!Log_File_Present) emit Log_Cleared();
  });
  Colour(*txt_NoConnection_alert_, Qt::white, Qt::darkRed);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(cmd_Open_Com_);
  layout->addWidget(txt_Logging_alert_, 1);
  layout->addWidget(txt_NoConnection_alert_, 1);
  layout->addStretch(0);  // takes the room while neither alert is shown
  layout->addWidget(Make_Interval(settings));
  layout->addWidget(cmd_Clear_Logg_);
  setFixedHeight(QFontMetrics(txt_Logging_alert_->font()).height() + fontMetrics().height());
  Show_State();
}

QFrame* Log_Live_Panel::Make_Interval(Setting_Controls& settings) {
  auto* frame = new QFrame;
  frame->setObjectName("Interval_Frame");
  frame->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
  auto* layout = new QGridLayout(frame);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  layout->addWidget(new QLabel("Show"), 0, 0);
  layout->addWidget(settings.Line("txt_Show_Log_Sek", log_settings.txt_Show_Log_Sek,
                                  "Width of the chart while a log runs, s (above 0, up to 300)", 5),
                    0, 1);
  layout->addWidget(new QLabel("s"), 0, 2);
  layout->addWidget(new QLabel("every"), 1, 0);
  layout->addWidget(settings.Line("txt_Show_Log_Interval", log_settings.txt_Show_Log_Interval,
                                  "How often the chart is drawn while a log runs, s (0.05 to 32.7)", 5),
                    1, 1);
  layout->addWidget(new QLabel("s"), 1, 2);
  settings.Add([frame] { frame->setVisible(!log_settings.check_LogToFileOnly); });
  return frame;
}

void Log_Live_Panel::Show_State() {
  const Live_Log_View view = Shown_Live_Log();
  QFont letters = cmd_Open_Com_->font();
  letters.setPointSize(view.button_font);
  letters.setBold(view.button_font >= bold_from_points);
  if (cmd_Open_Com_->font() != letters) cmd_Open_Com_->setFont(letters);
  cmd_Open_Com_->setText(view.button.c_str());
  cmd_Open_Com_->setEnabled(view.button_enabled);
  cmd_Clear_Logg_->setEnabled(view.log_buttons_enabled);
  Colour(*txt_Logging_alert_, view.alert_inverted ? Qt::white : Qt::black,
         view.alert_inverted ? Qt::black : Qt::white);
  txt_Logging_alert_->setVisible(view.logging_alert);
  txt_NoConnection_alert_->setVisible(view.no_connection_alert);
}

}  // namespace kx

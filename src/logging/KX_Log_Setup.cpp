#include "logging/KX_Log_Setup.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "logging/log_setup_commands.h"
#include "logging/panels/Log_Setup_Signals.h"
#include "logging/panels/Log_Setup_Vehicle.h"
#include "settings/brand.h"
#include "widgets/form_helpers.h"
#include "widgets/open_form.h"
#include "widgets/scroll_page.h"
#include "widgets/wheel_guard.h"

namespace kx {
namespace {

constexpr int lines_high = 40;
constexpr const char* show_advanced = "Advanced settings";
constexpr const char* show_standard = "Standard settings";

QPushButton* Button(const QString& name, const QString& caption, const QString& tip) {
  auto* button = new QPushButton(caption);
  button->setObjectName(name);
  button->setToolTip(tip);
  return button;
}

}  // namespace

KX_Log_Setup::KX_Log_Setup(Setting_Controls& settings, QWidget* parent)
    : QWidget(parent, Qt::Window),
      signals_(new Log_Setup_Signals),
      vehicle_(new Log_Setup_Vehicle(settings)),
      cmd_Advanced_Log_Settings_(Button("cmd_Advanced_Log_Settings", show_advanced,
                                        "Show or hide the settings of the calculations")) {
  setObjectName("KX_Log_Setup");
  setWindowTitle(Text("Log settings" + (Program_Name.empty() ? "" : " - " + Program_Name)));
  auto* halves = new QHBoxLayout;
  halves->addWidget(signals_);
  halves->addWidget(new Scroll_Page(vehicle_));
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(halves, 1);
  layout->addWidget(Make_Buttons());
  Guard_Wheels_In(this);
}

/// Wide enough for both halves, once the rows have their names; some lines high, since both scroll.
QSize KX_Log_Setup::sizeHint() const {
  return {QWidget::sizeHint().width(), fontMetrics().height() * lines_high};
}

QWidget* KX_Log_Setup::Make_Buttons() {
  auto* buttons = new QWidget;
  auto* ok = Button("cmd_Log_Setup_OK", "OK", "Keep the settings with the log");
  On_Click(ok, [this] {
    cmd_Log_Setup_OK_Click();
    hide();
  });
  auto* cancel = Button("CancelButton", "Cancel", "Go back to the settings as they were");
  connect(cancel, &QPushButton::clicked, this, &QWidget::close);
  On_Click(cmd_Advanced_Log_Settings_, [this] { cmd_Advanced_Log_Settings_Click(); });
  auto* layout = new QHBoxLayout(buttons);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(cmd_Advanced_Log_Settings_);
  layout->addStretch(1);
  layout->addWidget(ok);
  layout->addWidget(cancel);
  return buttons;
}

void KX_Log_Setup::cmd_Advanced_Log_Settings_Click() {
  const bool show = !vehicle_->Advanced().isVisibleTo(vehicle_);
  vehicle_->Advanced().setVisible(show);
  cmd_Advanced_Log_Settings_->setText(show ? show_standard : show_advanced);
}

void KX_Log_Setup::Open(QWidget& over) {
  if (!isVisible()) Guarded(Log_Setup_Opened);
  Open_Form(*this, over);
}

void KX_Log_Setup::Show_Rows() { signals_->Show_Rows(); }

void KX_Log_Setup::closeEvent(QCloseEvent* event) {
  if (isVisible()) Guarded(CancelButton_Click);
  event->accept();
}

}  // namespace kx

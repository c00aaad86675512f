#include "workspace/panels/Engine_Marks.h"

#include <QApplication>

#include "logging/live_log.h"
#include "settings/message.h"
#include "workspace/engine_place.h"
#include "workspace/panels/Tables_Panel.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

/// A drag in a grid or a chart, an open menu and a question are about the entries that they began with.
bool User_Is_Busy() {
  return QApplication::mouseButtons() != Qt::NoButton || QApplication::activePopupWidget() != nullptr ||
         QApplication::activeModalWidget() != nullptr;
}

void Follow_Engine() {
  const auto table = Active_Table();
  if (!table || User_Is_Busy()) return;
  const auto place = Engine_Place(*table);
  if (place && Follow_To_Place(*table, *place)) Show_Table(*table);
}

}  // namespace

Engine_Marks::Engine_Marks(const std::vector<Tables_Panel*>& tables, QMenu* log_menu, QObject* parent)
    : QObject(parent), tables_(tables), follow_(log_menu->addAction("&Follow the engine")) {
  follow_->setObjectName("Follow_Engine");
  follow_->setShortcut(QKeySequence("F5"));
  follow_->setShortcutContext(Qt::ApplicationShortcut);  // from the log window, too
  follow_->setCheckable(true);
  follow_->setEnabled(false);
  connect(follow_, &QAction::triggered, this, [](bool on) { Guarded([on] { Follow_Engine_Click(on); }); });
  live_log_hooks.show_place = [this] { Show(); };
}

Engine_Marks::~Engine_Marks() { live_log_hooks.show_place = {}; }

void Engine_Marks::Show() {
  follow_->setEnabled(Log_Running());
  follow_->setChecked(Following_Engine());
  if (Following_Engine()) Follow_Engine();
  for (Tables_Panel* panel : tables_) panel->Show_Place();
}

}  // namespace kx

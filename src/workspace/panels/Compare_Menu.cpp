#include "workspace/panels/Compare_Menu.h"

#include "widgets/form_helpers.h"
#include "workspace/compare_commands.h"

namespace kx {

Compare_Menu::Compare_Menu(QWidget* parent) : QMenu("Co&mpare", parent), sources_(new QActionGroup(this)) {
  setObjectName("Compare_menu");
  setToolTipsVisible(true);
  box_ = Add_Source("Compare_box", Reference_Source::box,
                    "What the last good read, verify or write has read from the master box");
  file_ = Add_Source("Compare_file", Reference_Source::file,
                     "Another setting file; it is looked at only and not loaded");
  Add_Source("Compare_opened", Reference_Source::opened,
             "The tune as it came from its file, the box or a card, before you changed it")
      ->setText("&Tune as opened");
  Add_Source("Compare_none", Reference_Source::none, "No marks")->setText("&None");
  Follow();
}

/// The tick is put right whatever came of the choice: a file dialog may have been cancelled.
QAction* Compare_Menu::Add_Source(const char* name, Reference_Source source, const char* tip) {
  QAction* action = addAction(QString());
  action->setObjectName(name);
  action->setToolTip(tip);
  action->setCheckable(true);
  action->setData(static_cast<int>(source));
  sources_->addAction(action);
  connect(action, &QAction::triggered, this, [this, source] {
    Guarded([source] { Compare_With(source); });
    Follow();
  });
  return action;
}

void Compare_Menu::Follow() {
  const bool box_known = Reference_Known(Reference_Source::box);
  box_->setText(box_known ? "&Box" : "&Box (not read yet)");
  box_->setEnabled(box_known);
  const bool of_file = Shown_Source() == Reference_Source::file;
  file_->setText(of_file ? "&File... (" + Text(Reference()->name).replace("&", "&&") + ")" : "&File...");
  for (QAction* source : sources_->actions())
    source->setChecked(source->data().toInt() == static_cast<int>(Shown_Source()));
}

}  // namespace kx

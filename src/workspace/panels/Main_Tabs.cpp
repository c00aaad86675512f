#include "workspace/panels/Main_Tabs.h"

#include <QShortcut>
#include <array>
#include <utility>

#include "platform/seams.h"
#include "widgets/form_helpers.h"
#include "workspace/cell_editing.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

/// Main tab, then the sub-tabs in the order of the main ones, parted by ";".
constexpr const char* tabs_habit = "tabs";

/// The core's note of which sub-tab of each panel is on show, in the order of the tabs.
constexpr std::array sub_tab_notes{&Shown_Tabs::SSTab_Ignition, &Shown_Tabs::SSTab_Fuel,
                                   &Shown_Tabs::SSTab_PWM, &Shown_Tabs::SSTab_Analog};

void Show(QTabWidget& tabs, int tab) {
  if (tabs.isTabVisible(tab)) tabs.setCurrentIndex(tab);
}

}  // namespace

Main_Tabs::Main_Tabs(QTabWidget& tabs, std::vector<Tables_Panel*> panels)
    : tabs_(tabs), panels_(std::move(panels)) {}

void Main_Tabs::Make_Keys(QWidget& form) {
  for (int tab = 0; tab < tabs_.count(); ++tab) {
    auto* key = new QShortcut(QKeySequence("Alt+" + QString::number(tab + 1)), &form);
    QObject::connect(key, &QShortcut::activated, &tabs_, [this, tab] { Show(tabs_, tab); });
  }
}

void Main_Tabs::Note_Shown() const {
  shown_tabs.sstab_Main = tabs_.currentIndex();
  for (std::size_t i = 0; i < panels_.size(); ++i)
    shown_tabs.*sub_tab_notes.at(i) = panels_[i]->currentIndex();
}

void Main_Tabs::Restore() {
  const QStringList kept = Text(platform::seams.desktop->Remembered(tabs_habit)).split(';');
  if (kept.size() != static_cast<qsizetype>(panels_.size()) + 1) return;
  for (std::size_t i = 0; i < panels_.size(); ++i)
    Show(*panels_[i], kept[static_cast<qsizetype>(i) + 1].toInt());
  Show(tabs_, kept[0].toInt());
}

void Main_Tabs::Remember() const {
  QStringList shown{QString::number(tabs_.currentIndex())};
  for (const Tables_Panel* panel : panels_) shown += QString::number(panel->currentIndex());
  platform::seams.desktop->Remember(tabs_habit, shown.join(';').toStdString());
}

void Main_Tabs::Go_To_Entry(Table table, int row) {
  const Table_Row& place = Row_Of(table);
  if (!tabs_.isTabVisible(place.tab)) return;
  Grid_Enter_Cell(table, row, row);
  tabs_.setCurrentIndex(place.tab);
  auto* panel = qobject_cast<Tables_Panel*>(tabs_.widget(place.tab));
  panel->setCurrentIndex(place.sub_tab);
  Table_Page* page = panel->Page_Of(table);
  page->Show_Values();
  page->Grid_Widget().setFocus();
}

}  // namespace kx

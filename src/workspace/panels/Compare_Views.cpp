#include "workspace/panels/Compare_Views.h"

#include <QMenuBar>
#include <QScrollArea>
#include <QStatusBar>

#include "settings/notice.h"
#include "widgets/elided_label.h"
#include "widgets/form_helpers.h"
#include "widgets/open_form.h"
#include "workspace/cell_editing.h"
#include "workspace/compare.h"
#include "workspace/difference_list.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

constexpr int status_width_in_characters = 44;

/// A tab bar is laid out anew by each text, the same one, too.
void Set_Tab_Text(QTabWidget& tabs, int tab, const QString& text) {
  if (tabs.tabText(tab) != text) tabs.setTabText(tab, text);
}

/// Scrolls whatever the widget stands in.
void Bring_Into_View(QWidget* widget) {
  for (QWidget* outer = widget->parentWidget(); outer != nullptr; outer = outer->parentWidget()) {
    if (auto* area = qobject_cast<QScrollArea*>(outer)) area->ensureWidgetVisible(widget);
  }
}

}  // namespace

Compare_Views::Compare_Views(QMainWindow& form, QTabWidget& tabs, std::vector<Tables_Panel*> tables,
                             KX_Config& config)
    : form_(form),
      tabs_(tabs),
      tables_(std::move(tables)),
      config_(config),
      status_(new Elided_Label("compare_status")) {
  // As wide as its text, but a long file name leaves room for what else the line says.
  status_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  status_->setMaximumWidth(status_->fontMetrics().averageCharWidth() * status_width_in_characters);
  form_.statusBar()->addPermanentWidget(status_);
  connect(&list_, &KX_Compare::Place_Wanted, this,
          [this](const Difference& difference) { Guarded([&] { Go_To(difference); }); });
  Make_Menu();
}

void Compare_Views::Make_Menu() {
  menu_ = new Compare_Menu(&form_);
  menu_->addSeparator();
  QAction* list = menu_->addAction("&List of differences...", QKeySequence("F8"), this,
                                   [this] { Open_Form(list_, form_); });
  list->setObjectName("Compare_list");
  form_.menuBar()->addMenu(menu_);
}

void Compare_Views::Show() {
  Show_Counts();
  status_->setText(Text(Compare_Status()));
  menu_->Follow();
  list_.Follow();
}

void Compare_Views::Show_Counts() {
  for (std::size_t i = 0; i < tables_.size(); ++i) {
    const int tab = static_cast<int>(i) + 1;
    Set_Tab_Text(tabs_, tab, Text(With_Count(Main_Caption_Of(tab), Differences_On_Tab(tab))));
    for (int sub_tab = 0; sub_tab < tables_[i]->count(); ++sub_tab) {
      const Page place{tab, sub_tab};
      Set_Tab_Text(*tables_[i], sub_tab, Text(With_Count(Caption_Of(place), Differences_On(place))));
    }
  }
}

/// The list gets out of the way of what it leads to.
void Compare_Views::Go_To(const Difference& difference) {
  QWidget* place = Shown_Place(difference);
  if (place == nullptr) return;
  Bring_Into_View(place);
  const QRect covered(place->mapToGlobal(QPoint()), place->size());
  if (list_.frameGeometry().intersects(covered)) list_.hide();
  place->window()->raise();
  place->window()->activateWindow();
  place->setFocus(Qt::OtherFocusReason);
}

QWidget* Compare_Views::Shown_Place(const Difference& difference) {
  if (difference.page == page::none) {
    Show_Notice("No control shows " + difference.name + ".");
    return nullptr;
  }
  if (difference.page == page::box_settings) {
    Open_Form(config_, form_);
    return config_.Shown_Control(Text(difference.control));
  }
  const int tab = difference.page.tab;
  Tables_Panel* panel = tables_[static_cast<std::size_t>(tab) - 1];
  if (!tabs_.isTabVisible(tab) || !panel->isTabVisible(difference.page.sub_tab)) {
    Show_Notice("The model preset or a setting of the tune hides the tab with " + difference.name + ".");
    return nullptr;
  }
  tabs_.setCurrentIndex(tab);
  panel->setCurrentIndex(difference.page.sub_tab);
  return difference.table ? Show_Entry(difference) : Show_Control(difference);
}

QWidget* Compare_Views::Show_Entry(const Difference& difference) {
  Table_Page* table_page =
      tables_[static_cast<std::size_t>(difference.page.tab) - 1]->Page_Of(*difference.table);
  Grid_Enter_Cell(*difference.table, difference.row, difference.row);
  Show_Table(*difference.table);
  return &table_page->Grid_Widget();
}

QWidget* Compare_Views::Show_Control(const Difference& difference) {
  return form_.findChild<QWidget*>(Text(difference.control));
}

}  // namespace kx

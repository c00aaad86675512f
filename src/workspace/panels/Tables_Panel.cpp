#include "workspace/panels/Tables_Panel.h"

#include "widgets/scroll_page.h"

namespace kx {

Tables_Panel::Tables_Panel(const QString& name, QWidget* parent) : QTabWidget(parent) { setObjectName(name); }

Table_Page* Tables_Panel::Add_Page(Table table, std::initializer_list<Chart_Id> charts,
                                   const std::function<QWidget*(Table_Page*)>& wrap) {
  auto* page = new Table_Page(table, charts);
  pages_.push_back(page);
  addTab(new Scroll_Page(wrap ? wrap(page) : page), Text(Caption_Of(kx::Page_Of(table))));
  return page;
}

void Tables_Panel::Add_Scrolled(Page place, QWidget* page) {
  addTab(new Scroll_Page(page), Text(Caption_Of(place)));
}

void Tables_Panel::Show_Values() {
  for (Table_Page* page : pages_) page->Show_Values();
}

void Tables_Panel::Show_Place() {
  for (Table_Page* page : pages_) {
    page->Show_Place(page->isVisible() ? Engine_Place(page->Shown_Table()) : std::nullopt);
  }
}

Table_Page* Tables_Panel::Page_Of(Table table) {
  for (Table_Page* page : pages_) {
    if (page->Shown_Table() == table) return page;
  }
  return nullptr;
}

}  // namespace kx

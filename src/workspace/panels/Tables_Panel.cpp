#include "workspace/panels/Tables_Panel.h"

#include <QScrollArea>
#include <QVBoxLayout>

namespace kx {

QLabel* Named_Text(const QString& name, const QString& text) {
  auto* label = new QLabel(text);
  label->setObjectName(name);
  label->setWordWrap(true);
  return label;
}

QFrame* Plain_Frame(const QString& name, QWidget* inside) {
  auto* frame = new QFrame;
  frame->setObjectName(name);
  auto* layout = new QVBoxLayout(frame);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(inside);
  return frame;
}

Tables_Panel::Tables_Panel(const QString& name, QWidget* parent) : QTabWidget(parent) { setObjectName(name); }

Table_Page* Tables_Panel::Add_Page(const QString& caption, Table table,
                                   std::initializer_list<Chart_Id> charts,
                                   const std::function<QWidget*(Table_Page*)>& wrap) {
  auto* page = new Table_Page(table, charts);
  pages_.push_back(page);
  addTab(wrap ? wrap(page) : page, caption);
  return page;
}

void Tables_Panel::Add_Scrolled(const QString& caption, QWidget* page) {
  auto* area = new QScrollArea;
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setWidget(page);
  addTab(area, caption);
}

void Tables_Panel::Show_Values() {
  for (Table_Page* page : pages_) page->Show_Values();
}

Table_Page* Tables_Panel::Page_Of(Table table) {
  for (Table_Page* page : pages_) {
    if (page->Shown_Table() == table) return page;
  }
  return nullptr;
}

}  // namespace kx

#pragma once

#include <QTabWidget>
#include <functional>
#include <vector>

#include "widgets/form_helpers.h"
#include "workspace/pages.h"
#include "workspace/panels/Table_Page.h"

namespace kx {

/// A tab of the main form that holds tuning tables: a tab control with its table pages.
class Tables_Panel : public QTabWidget {
  Q_OBJECT

 public:
  explicit Tables_Panel(const QString& name, QWidget* parent = nullptr);

  /// Values of every table, after Update_All.
  void Show_Values();

  /// Where the engine is, in the table on show; no mark stays in another.
  void Show_Place();

  /// Help texts, frames and available tabs, after Update_All and Update_Tabs.
  virtual void Show_Layout() = 0;

  /// The page of @p table when it is one of this panel's, else null.
  [[nodiscard]] Table_Page* Page_Of(Table table);

 protected:
  /// Makes a table's page; @p wrap puts it into another widget, which becomes the tab.
  Table_Page* Add_Page(Table table, std::initializer_list<Chart_Id> charts,
                       const std::function<QWidget*(Table_Page*)>& wrap = {});

  /// Adds a page of controls that scrolls when it does not fit.
  void Add_Scrolled(Page place, QWidget* page);

 private:
  std::vector<Table_Page*> pages_;
};

}  // namespace kx

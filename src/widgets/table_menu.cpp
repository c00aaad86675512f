#include "widgets/table_menu.h"

#include <QMenu>
#include <QShortcut>

#include "settings/numbers.h"
#include "widgets/form_helpers.h"

namespace kx {
namespace {

/// An entry of @p menu, with a key that works while @p grid has the focus.
QAction* Entry(QMenu* menu, Table_Grid& grid, const QString& name, const QString& caption,
               const std::function<void()>& handler, const QKeySequence& keys = {}) {
  QAction* action = menu->addAction(caption);
  action->setObjectName(name);
  action->setShortcut(keys);
  action->setShortcutContext(Qt::WidgetShortcut);
  grid.addAction(action);
  On_Trigger(action, handler);
  return action;
}

/// An entry that uses the number in a box of the panel, and shows it.
void Number_Entry(QMenu* menu, Table_Grid& grid, const QString& name, const QString& caption,
                  const std::function<void()>& handler, const Shown_Text& box) {
  QAction* action = Entry(menu, grid, name, caption, handler);
  QObject::connect(menu, &QMenu::aboutToShow, action, [action, caption, &box] {
    const bool number = Whole_Number_Text(box.Text()).has_value();
    action->setText(number ? caption + " " + Text(box.Text()) : caption);
    action->setEnabled(number);
  });
}

}  // namespace

void Add_Table_Menu(Table_Grid& grid, const Table_Menu_Handlers& handlers, const Table_Tool_Handlers& tools) {
  auto* menu = new QMenu(&grid);
  menu->setObjectName("table_menu");
  Entry(menu, grid, "table_copy", "&Copy", handlers.copy, QKeySequence("Ctrl+Shift+C"));
  Entry(menu, grid, "table_paste", "&Paste", handlers.paste, QKeySequence("Ctrl+Shift+V"));
  menu->addSeparator();
  QAction* line = Entry(menu, grid, "table_interpolate", "&Interpolate", handlers.interpolate);
  QAction* smooth = Entry(menu, grid, "table_smooth", "S&mooth", handlers.smooth);
  menu->addSeparator();
  Entry(menu, grid, "table_plus", "Step &up", tools.plus, QKeySequence("Ctrl+Up"));
  Entry(menu, grid, "table_minus", "Step &down", tools.minus, QKeySequence("Ctrl+Down"));
  Entry(menu, grid, "table_steep", "&Steeper", tools.steep);
  Entry(menu, grid, "table_flat", "&Flatter", tools.flat);
  Number_Entry(menu, grid, "table_set", "Set &value", tools.set_table, *tools.set_table_text);
  Number_Entry(menu, grid, "table_scale", "Sc&ale %", tools.scale_table, *tools.scale_table_text);
  QObject::connect(menu, &QMenu::aboutToShow, &grid, [line, smooth, can_shape = handlers.can_shape] {
    line->setEnabled(can_shape());
    smooth->setEnabled(can_shape());
  });
  // Not exec: a menu that is open waits for nothing, and what happens meanwhile is seen in the table.
  const auto open = [menu](const QPoint& at) { menu->popup(at); };
  QObject::connect(&grid, &Table_Grid::Menu_Wanted, menu, open);
  auto* key = new QShortcut(QKeySequence("Shift+F10"), &grid, nullptr, nullptr, Qt::WidgetShortcut);
  QObject::connect(key, &QShortcut::activated, &grid, &Table_Grid::Want_Menu);
}

}  // namespace kx

#pragma once

#include <QTabWidget>
#include <vector>

#include "workspace/panels/Tables_Panel.h"

namespace kx {

/// Which tabs of the main form are on show: told to the core, left to the next start, and reached by keys and
/// by what leads to an entry of a table.
class Main_Tabs {
 public:
  /// @p panels are the tabs of @p tabs behind the first, each with tabs of its own.
  Main_Tabs(QTabWidget& tabs, std::vector<Tables_Panel*> panels);

  /// Alt+1 to Alt+5 in @p form; a tab that the preset hides stays hidden.
  void Make_Keys(QWidget& form);

  /// Tells the core which ones are on show.
  void Note_Shown() const;

  /// The tabs as they were left; one that the preset hides does not come on show.
  void Restore();
  void Remember() const;

  /// The cursor of @p table goes to entry @p row, and its page comes on show; nothing where its tab is
  /// hidden.
  void Go_To_Entry(Table table, int row);

 private:
  QTabWidget& tabs_;
  std::vector<Tables_Panel*> panels_;
};

}  // namespace kx

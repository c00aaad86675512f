#include "form_fixture.h"

#include <QAction>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <filesystem>
#include <fstream>

#include "platform/seams.h"
#include "support/test_folders.h"
#include "widgets/table_grid.h"
#include "workspace/tables.h"

namespace kx {

void Form_Fixture::SetUp() {
  std::filesystem::copy(test::Shipped_Data(), folder_.Path(), std::filesystem::copy_options::recursive);
  std::filesystem::current_path(folder_.Path());
  // The user's own places of windows and recent files stay out of the tests, and theirs out of each other.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                     QString::fromStdString(folder_.Path("desktop")));
  qt_.Install();
  platform::seams.ask = &ask_;
  form_ = std::make_unique<BoostProgMain>();
  form_->resize(1366, 740);
  form_->show();
  QApplication::processEvents();
}

void Form_Fixture::TearDown() {
  form_.reset();
  std::filesystem::current_path("/");
  platform::seams = {};
}

void Form_Fixture::Show(Table table) {
  const Table_Row& row = Row_Of(table);
  Find<QTabWidget>("sstab_Main")->setCurrentIndex(row.tab);
  qobject_cast<QTabWidget*>(Find<QTabWidget>("sstab_Main")->widget(row.tab))->setCurrentIndex(row.sub_tab);
  QApplication::processEvents();
}

void Form_Fixture::Pick(Table table, int row) {
  auto* grid = Find<Table_Grid>(Row_Of(table).grid);
  const QModelIndex cell = grid->model()->index(row - 1, 0);
  grid->scrollTo(cell);
  QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(cell).center());
}

void Form_Fixture::Click(const char* button) {
  QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
  QApplication::processEvents();
}

void Form_Fixture::Trigger(const char* entry) {
  Find<QAction>(entry)->trigger();
  QApplication::processEvents();
}

void Form_Fixture::Write_File(const std::string& name, const std::string& bytes) {
  std::ofstream(folder() + name, std::ios::binary) << bytes;
}

}  // namespace kx

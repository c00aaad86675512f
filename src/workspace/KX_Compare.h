#pragma once

#include <QAbstractTableModel>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTableView>
#include <functional>
#include <vector>

#include "workspace/difference_list.h"
#include "workspace/panels/Compare_Menu.h"

namespace kx {

/// The differences that a filter lets through, with their texts.
class Difference_Model : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  /// Takes the differences on show in which every word of @p filter stands, in whichever column.
  void Fill(const QString& filter);

  [[nodiscard]] const Difference& At(int row) const { return rows_[static_cast<std::size_t>(row)]; }
  [[nodiscard]] const std::vector<Difference>& All() const { return rows_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  std::vector<Difference> rows_;
  std::vector<Difference_Cells> cells_;
  Difference_Cells headings_;
};

/// "Compare": all differences of the tune from its reference, as rows to read, search, copy, export, print,
/// follow to their place, or take over.
class KX_Compare : public QMainWindow {
  Q_OBJECT

 public:
  explicit KX_Compare(QWidget* parent = nullptr);

  /// Title and rows from the differences as last reckoned; while closed only once it opens.
  void Follow();

 signals:
  /// The user wants to see where a difference stands.
  void Place_Wanted(const kx::Difference& difference);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void Make_Menus();
  QWidget* Make_Buttons();
  void Make_List();
  void Fill();
  void Enable_Buttons();
  void Take(const std::function<void()>& take);
  void Go_To_Current();
  void Print();
  [[nodiscard]] std::vector<Difference> Selected() const;

  Difference_Model* model_;
  QTableView* list_;
  QLineEdit* filter_;
  QLabel* title_;
  QPushButton* take_;
  QPushButton* take_table_;
  QPushButton* go_to_;
  Compare_Menu* menu_;
};

}  // namespace kx

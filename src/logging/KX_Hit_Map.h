#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <array>

#include "widgets/heat_grid.h"
#include "widgets/heat_legend.h"
#include "workspace/log_hits.h"

namespace kx {

/// "Hit map": where the log on screen has been, over the load and RPM entries of the tune, and what a signal
/// was there. Follows the log, also while it runs, and the tune's axes.
class KX_Hit_Map : public QWidget {
  Q_OBJECT

 public:
  explicit KX_Hit_Map(QWidget* parent = nullptr);

  /// Shows the log and the axes as they are now; nothing while the form is closed.
  void Follow_Log();

 signals:
  /// The user wants the entries that a cell belongs to; a load entry of 0 is none, as the map's load is not
  /// the table's.
  void Entry_Wanted(kx::Table load_table, int load_entry, int rpm_entry);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  struct Limit_Controls {
    QComboBox* signal;
    QLineEdit* from;
    QLineEdit* to;
  };

  QWidget* Make_Choices();
  QWidget* Make_Filter();
  QComboBox* List(const QString& name, const QString& tip);
  QCheckBox* Check(const QString& name, const QString& caption, const QString& tip);
  Limit_Controls Make_Limit(std::size_t index);
  void Choice_Changed();
  void Take_Limit(std::size_t index, QLineEdit* box, std::optional<double> Hit_Limit::*end);
  void Fill_Lists();
  void Show_Map();
  void Show_Tips();
  void Export();
  void Want_Entry(int row, int column);
  [[nodiscard]] std::string Picture(const std::string& format);

  Hit_Request request_;
  Log_Hits hits_;
  bool signal_chosen_ = false;  ///< the user's; until then it follows the ticks of the log window
  QComboBox* table_;
  QComboBox* load_;
  QComboBox* signal_;
  QComboBox* measure_;
  QCheckBox* high_load_;
  QCheckBox* stretch_;
  std::array<Limit_Controls, hit_range_count> limits_{};
  Heat_Grid* grid_;
  QLabel* summary_;
  Heat_Legend* legend_;
};

}  // namespace kx

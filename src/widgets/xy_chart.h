#pragma once

#include <qcustomplot.h>

namespace kx {

/// A chart of one line through points at any x. Draws only while it is on screen.
class Xy_Chart : public QCustomPlot {
  Q_OBJECT

 public:
  Xy_Chart(const QString& name, const QString& title, const QString& x_title, const QString& y_title,
           QWidget* parent = nullptr);

  /// Shows the line over @p x_range in @p divisions steps. No points leave an empty chart.
  void Show(const QVector<double>& x, const QVector<double>& y, QCPRange x_range, int divisions);

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Apply_Palette();
  void Draw();

  QCPTextElement* title_;
  QSharedPointer<QCPAxisTickerFixed> divisions_{new QCPAxisTickerFixed};
  bool stale_ = false;  ///< changed while hidden
};

}  // namespace kx

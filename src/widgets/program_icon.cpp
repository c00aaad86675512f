#include "widgets/program_icon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace kx {
namespace {

constexpr int units = 64;  ///< width and height of the drawing
const QColor paper(0x1f, 0x2a, 0x36);
const QColor lines(0x42, 0x56, 0x6b);
const QColor axes(0xc9, 0xd4, 0xdf);
const QColor curve(0xff, 0x9f, 0x1c);

QPen Round_Pen(const QColor& colour, qreal width) {
  return {colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

void Draw_Axes(QPainter& painter) {
  painter.setPen(QPen(lines, 1.5));
  for (const int x : {22, 34, 46}) painter.drawLine(x, 10, x, 46);
  for (const int y : {22, 34}) painter.drawLine(10, y, 54, y);
  painter.setPen(Round_Pen(axes, 3));
  painter.drawPolyline(QPolygon({{10, 10}, {10, 46}, {54, 46}}));
}

void Draw_Curve(QPainter& painter) {
  QPainterPath path({12, 42});
  path.cubicTo(22, 40, 24, 27, 32, 25);
  path.cubicTo(40, 23, 44, 20, 52, 12);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(Round_Pen(curve, 4));
  painter.drawPath(path);
  painter.setBrush(paper);
  painter.setPen(QPen(Qt::white, 3));
  painter.drawEllipse(QPointF(34, 24.5), 5, 5);
}

void Draw_Keys(QPainter& painter) {
  painter.setPen(Qt::NoPen);
  for (const qreal x : {10.0, 21.7, 33.3, 45.0}) {
    painter.setBrush(x == 33.3 ? curve : axes);
    painter.drawRoundedRect(QRectF(x, 51, 9, 4), 1, 1);
  }
}

QPixmap Picture(int size) {
  QPixmap picture(size, size);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(static_cast<qreal>(size) / units, static_cast<qreal>(size) / units);
  painter.setPen(Qt::NoPen);
  painter.setBrush(paper);
  painter.drawRoundedRect(QRect(3, 3, 58, 58), 10, 10);
  Draw_Axes(painter);
  Draw_Curve(painter);
  Draw_Keys(painter);
  return picture;
}

}  // namespace

QIcon Program_Icon() {
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128, 256}) icon.addPixmap(Picture(size));
  return icon;
}

}  // namespace kx

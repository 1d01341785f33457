#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtGui/QColor>
#include <QtQuick/QQuickPaintedItem>

namespace zephyx {

/// A line drawing by name, sharp at every size.
class Symbol : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
  Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

 public:
  explicit Symbol(QQuickItem* parent = nullptr);

  QString name() const { return name_; }
  void setName(const QString& name);
  QColor color() const { return color_; }
  void setColor(const QColor& color);
  void paint(QPainter* painter) override;

 signals:
  void nameChanged();
  void colorChanged();

 private:
  QString name_;
  QColor color_ = Qt::white;
};

}  // namespace zephyx

#include "Platform/Linux/Symbols/SymbolPath.h"

#include <QtCore/QLatin1String>
#include <QtCore/QStringList>
#include <QtGui/QPainterPathStroker>

namespace zephyx {
namespace {

// M x y: move. L x y: line. C x1 y1 x2 y2 x y: curve. Z: back to the beginning. O x y r: circle.
// R x y w h r: rounded rectangle. Everything is separated by one space.
struct Drawing {
  const char* name;
  const char* lines;
  const char* solids = nullptr;  ///< closed outlines that are filled
  bool isStruckThrough = false;
};

constexpr const char* microphoneStand =
    "M 6 11 C 6 14.3 8.7 17 12 17 C 15.3 17 18 14.3 18 11 M 12 17 L 12 21 M 8.5 21 L 15.5 21";
constexpr const char* microphoneCapsule = "R 9 2.5 6 11.5 3";
constexpr const char* strike = "M 4.5 3.5 L 19.5 20.5";
/// Of the gap on both sides of the line that strikes a drawing through.
constexpr double strikeGap = 1.4;

constexpr Drawing drawings[] = {
    {"search", "O 10.5 10.5 6 M 15 15 L 20 20"},
    {"close", "M 6.5 6.5 L 17.5 17.5 M 17.5 6.5 L 6.5 17.5"},
    {"check", "M 5 12.5 L 10 17.5 L 19 7"},
    {"plus", "M 12 5 L 12 19 M 5 12 L 19 12"},
    {"menu", "O 5.5 12 0.8 O 12 12 0.8 O 18.5 12 0.8"},
    {"sliders",
     "M 4 8 L 12 8 M 17 8 L 20 8 O 14.5 8 2.3 M 4 16 L 7 16 M 12 16 L 20 16 O 9.5 16 2.3"},
    {"back", "M 14.5 5.5 L 8 12 L 14.5 18.5"},
    {"pin",
     "M 9 3.5 L 15 3.5 L 14.5 9.5 C 16.8 10.6 18 12.4 18 14.5 L 6 14.5 C 6 12.4 7.2 10.6 "
     "9.5 9.5 Z M 12 14.5 L 12 20.5"},
    {"text", "M 5 6.5 L 19 6.5 M 5 12 L 19 12 M 5 17.5 L 13 17.5"},
    {"url",
     "M 10 14 C 11.8 15.8 14.2 15.8 16 14 L 19 11 C 20.7 9.2 20.7 6.8 19 5 C 17.2 3.3 14.8 "
     "3.3 13 5 L 11.8 6.2 M 14 10 C 12.2 8.2 9.8 8.2 8 10 L 5 13 C 3.3 14.8 3.3 17.2 5 19 C "
     "6.8 20.7 9.2 20.7 11 19 L 12.2 17.8"},
    {"image", "R 3.5 5 17 14 2.5 O 8.5 9.7 1.6 M 4.5 17.5 L 10 12.8 L 13 15.4 L 16 12.4 L 20 16.2"},
    {"file",
     "M 13.5 3.5 L 7.5 3.5 C 6.4 3.5 5.5 4.4 5.5 5.5 L 5.5 18.5 C 5.5 19.6 6.4 20.5 7.5 "
     "20.5 L 16.5 20.5 C 17.6 20.5 18.5 19.6 18.5 18.5 L 18.5 8.5 Z M 13.5 3.5 L 13.5 8.5 "
     "L 18.5 8.5"},
    {"folder",
     "M 3.5 18 L 3.5 6.5 C 3.5 5.7 4.2 5 5 5 L 9 5 L 11.5 7.5 L 19 7.5 C 19.8 7.5 20.5 "
     "8.2 20.5 9 L 20.5 18 C 20.5 18.8 19.8 19.5 19 19.5 L 5 19.5 C 4.2 19.5 3.5 18.8 "
     "3.5 18 Z"},
    {"open",
     "M 13.5 4.5 L 19.5 4.5 L 19.5 10.5 M 19.5 4.5 L 11 13 M 17.5 14 L 17.5 18 C 17.5 18.8 "
     "16.8 19.5 16 19.5 L 6 19.5 C 5.2 19.5 4.5 18.8 4.5 18 L 4.5 8 C 4.5 7.2 5.2 6.5 6 "
     "6.5 L 10 6.5"},
    {"trash",
     "M 4.5 7 L 19.5 7 M 9 7 L 9 5.5 C 9 4.7 9.5 4 10.5 4 L 13.5 4 C 14.5 4 15 4.7 15 5.5 "
     "L 15 7 M 6.5 7 L 7.3 18.6 C 7.4 19.7 8.1 20.5 9.2 20.5 L 14.8 20.5 C 15.9 20.5 16.6 "
     "19.7 16.7 18.6 L 17.5 7 M 10.2 11 L 10.2 16.5 M 13.8 11 L 13.8 16.5"},
    {"eye",
     "M 2.5 12 C 4.8 7.8 8.2 5.8 12 5.8 C 15.8 5.8 19.2 7.8 21.5 12 C 19.2 16.2 15.8 18.2 "
     "12 18.2 C 8.2 18.2 4.8 16.2 2.5 12 Z O 12 12 2.8"},
    {"lock",
     "R 5 10.5 14 9.5 2.2 M 8 10.5 L 8 8 C 8 5.5 9.6 3.8 12 3.8 C 14.4 3.8 16 5.5 16 8 L "
     "16 10.5"},
    {"info", "O 12 12 8.5 M 12 11 L 12 16.2 M 12 7.8 L 12 8"},
    {"clipboard", "R 5 5 14 15.5 2.2 R 9 3 6 4 1.2 M 8.5 11.5 L 15.5 11.5 M 8.5 15.5 L 13 15.5"},
    {"translate",
     "M 3.5 6 L 12.5 6 M 8 4 L 8 6 M 11 6 C 10.4 9.6 8 12.4 4.2 13.8 M 5.4 8.2 C 6.6 11 8.8 13 "
     "11.4 13.8 M 11.5 20 L 15.8 10 L 20.2 20 M 13 16.8 L 18.7 16.8"},
    {"spelling",
     "M 3.5 14 L 7.2 5 L 11 14 M 4.8 11 L 9.7 11 M 14 5 L 14 14 M 14 9.6 C 15 7.6 19.5 7.6 19.5 "
     "11.4 C 19.5 15 15 15 14 13 M 4 19 L 7 17.6 L 10 19 L 13 17.6 L 16 19 L 19 17.6"},
    {"improve",
     "M 4.5 19.5 L 14.5 9.5 M 12.4 7.4 L 16.6 11.6 M 14.5 9.5 L 16.4 7.6 M 9 3.5 L 9 7 M 7.2 5.2 "
     "L 10.8 5.2 M 19 13.5 L 19 17 M 17.2 15.2 L 20.8 15.2 M 18.6 3.4 L 18.6 5.4 M 17.6 4.4 L "
     "19.6 4.4"},
    {"columns", "R 3.5 5 17 14 2.5 M 12 5 L 12 19"},
    {"restart",
     "M 19 12 C 19 16 16 19 12 19 C 8 19 5 16 5 12 C 5 8 8 5 12 5 C 14.8 5 17 6.2 18.6 8.4 M 18.8 "
     "4.4 L 18.8 8.6 L 14.6 8.6"},
    {"warning", "M 12 4.5 L 20.5 19 L 3.5 19 Z M 12 10 L 12 14.2 M 12 16.6 L 12 16.8"},
    {"note",
     "M 14 4.5 L 6.5 4.5 C 5.4 4.5 4.5 5.4 4.5 6.5 L 4.5 17.5 C 4.5 18.6 5.4 19.5 6.5 19.5 "
     "L 17.5 19.5 C 18.6 19.5 19.5 18.6 19.5 17.5 L 19.5 11 M 18.2 3.8 L 20.2 5.8 L 12.5 "
     "13.5 L 9.8 14.2 L 10.5 11.5 Z"},

    {"note.text", "R 4 3.5 16 17 3 M 7.5 8.5 L 16.5 8.5 M 7.5 12 L 16.5 12 M 7.5 15.5 L 13 15.5"},
    {"cpu",
     "R 6.5 6.5 11 11 2 R 10 10 4 4 0.8 M 9.5 3.5 L 9.5 6.5 M 14.5 3.5 L 14.5 6.5 M 9.5 17.5 L "
     "9.5 20.5 M 14.5 17.5 L 14.5 20.5 M 3.5 9.5 L 6.5 9.5 M 3.5 14.5 L 6.5 14.5 M 17.5 9.5 L "
     "20.5 9.5 M 17.5 14.5 L 20.5 14.5"},
    {"thermometer",
     "M 9.8 13.2 L 9.8 5.7 C 9.8 2.8 14.2 2.8 14.2 5.7 L 14.2 13.2 C 17.2 15.2 16.4 20.6 12 20.6 "
     "C 7.6 20.6 6.8 15.2 9.8 13.2 Z M 12 8.5 L 12 15",
     "O 12 16.6 1.7"},
    {"memorychip",
     "R 3.5 7 17 10 1.8 R 7 10.2 3.2 3.6 0.4 R 13.8 10.2 3.2 3.6 0.4 M 7 4.5 L 7 7 M 10.4 4.5 L "
     "10.4 7 M 13.6 4.5 L 13.6 7 M 17 4.5 L 17 7 M 7 17 L 7 19.5 M 10.4 17 L 10.4 19.5 M 13.6 17 L "
     "13.6 19.5 M 17 17 L 17 19.5"},
    {"internaldrive",
     "R 3.3 12.8 17.4 6.4 2 M 3.7 13.8 L 6.4 6.6 C 6.7 5.8 7.2 5.4 8 5.4 L 16 5.4 C 16.8 5.4 17.3 "
     "5.8 17.6 6.6 L 20.3 13.8",
     "O 17.2 16 1.2"},
    {"chevron.down", "M 5.5 9 L 12 15.5 L 18.5 9"},
    {"chevron.up", "M 5.5 15 L 12 8.5 L 18.5 15"},
    {"moon.fill", "",
     "M 20.2 14.2 C 19.1 14.8 17.8 15.1 16.5 15.1 C 12.4 15.1 9.1 11.8 9.1 7.7 C 9.1 6.3 9.4 5 10 "
     "3.8 C 6.4 4.8 3.7 8.1 3.7 12 C 3.7 16.6 7.4 20.4 12.1 20.4 C 15.9 20.4 19.2 17.8 20.2 14.2 "
     "Z"},
    {"sun.max.fill",
     "M 12 2.4 L 12 4.4 M 12 19.6 L 12 21.6 M 2.4 12 L 4.4 12 M 19.6 12 L 21.6 12 M 5.2 5.2 L 6.6 "
     "6.6 M 17.4 17.4 L 18.8 18.8 M 5.2 18.8 L 6.6 17.4 M 17.4 6.6 L 18.8 5.2",
     "O 12 12 4.6"},
    {"mic.fill", microphoneStand, microphoneCapsule},
    {"mic.slash.fill", microphoneStand, microphoneCapsule, true},
};

int argumentsOf(char command) {
  switch (command) {
    case 'M':
    case 'L':
      return 2;
    case 'O':
      return 3;
    case 'R':
      return 5;
    case 'C':
      return 6;
    default:
      return 0;
  }
}

QPainterPath parse(const char* lines) {
  QPainterPath path;
  const QStringList words = QString::fromLatin1(lines).split(' ', Qt::SkipEmptyParts);
  for (qsizetype at = 0; at < words.size();) {
    const char command = words[at++].front().toLatin1();
    double n[6] = {};
    for (int i = 0; i < argumentsOf(command); ++i) n[i] = words[at++].toDouble();
    switch (command) {
      case 'M':
        path.moveTo(n[0], n[1]);
        break;
      case 'L':
        path.lineTo(n[0], n[1]);
        break;
      case 'C':
        path.cubicTo(n[0], n[1], n[2], n[3], n[4], n[5]);
        break;
      case 'O':
        path.addEllipse(QPointF(n[0], n[1]), n[2], n[2]);
        break;
      case 'R':
        path.addRoundedRect(n[0], n[1], n[2], n[3], n[4], n[4]);
        break;
      default:
        path.closeSubpath();
        break;
    }
  }
  return path;
}

const Drawing* find(const QString& name) {
  for (const Drawing& drawing : drawings)
    if (name == QLatin1String(drawing.name)) return &drawing;
  return nullptr;
}

/// What a pen of this width covers.
QPainterPath stroked(const QPainterPath& path, double width) {
  QPainterPathStroker stroker;
  stroker.setWidth(width);
  stroker.setCapStyle(Qt::RoundCap);
  stroker.setJoinStyle(Qt::RoundJoin);
  auto covered = stroker.createStroke(path);
  // Strokes cross each other; what two of them cover is covered all the same.
  covered.setFillRule(Qt::WindingFill);
  return covered;
}

}  // namespace

QPainterPath symbolPath(const QString& name) {
  const auto* drawing = find(name);
  return drawing ? parse(drawing->lines) : QPainterPath();
}

QPainterPath symbolGlyph(const QString& name, double lineWidth) {
  const auto* drawing = find(name);
  if (!drawing) return {};
  auto glyph = stroked(parse(drawing->lines), lineWidth);
  if (drawing->solids) glyph = glyph.united(parse(drawing->solids));
  if (drawing->isStruckThrough) {
    const auto line = parse(strike);
    glyph =
        glyph.subtracted(stroked(line, lineWidth + 2 * strikeGap)).united(stroked(line, lineWidth));
  }
  return glyph;
}

}  // namespace zephyx

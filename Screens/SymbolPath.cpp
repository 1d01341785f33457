#include "Screens/SymbolPath.h"

#include <QtCore/QLatin1String>
#include <QtCore/QStringList>

namespace zephyx {
namespace {

// M x y: move. L x y: line. C x1 y1 x2 y2 x y: curve. Z: back to the beginning. O x y r: circle.
// R x y w h r: rounded rectangle. Everything is separated by one space.
struct Drawing {
  const char* name;
  const char* lines;
};

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
    {"note",
     "M 14 4.5 L 6.5 4.5 C 5.4 4.5 4.5 5.4 4.5 6.5 L 4.5 17.5 C 4.5 18.6 5.4 19.5 6.5 19.5 "
     "L 17.5 19.5 C 18.6 19.5 19.5 18.6 19.5 17.5 L 19.5 11 M 18.2 3.8 L 20.2 5.8 L 12.5 "
     "13.5 L 9.8 14.2 L 10.5 11.5 Z"},
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
  const QStringList words = QString::fromLatin1(lines).split(' ');
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

}  // namespace

QPainterPath symbolPath(const QString& name) {
  for (const Drawing& drawing : drawings)
    if (name == QLatin1String(drawing.name)) return parse(drawing.lines);
  return {};
}

}  // namespace zephyx

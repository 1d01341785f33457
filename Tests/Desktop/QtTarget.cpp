// A Qt program with one line of text, for copying from and pasting into: `qt_target FILE [TEXT
// [DELAY]]` keeps FILE equal to what the line holds, and copies DELAY milliseconds after the chord,
// never with a negative one.
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>

namespace {

class Line : public QLineEdit {
 public:
  int copyDelay = 0;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (copyDelay == 0 || !event->matches(QKeySequence::Copy))
      return QLineEdit::keyPressEvent(event);
    if (copyDelay > 0) QTimer::singleShot(copyDelay, Qt::PreciseTimer, this, [this] { copy(); });
  }
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  if (argc < 2) return 2;
  Line line;
  line.setWindowTitle("Qt target");
  line.resize(400, 60);
  const QString path = QString::fromLocal8Bit(argv[1]);
  QObject::connect(&line, &QLineEdit::textChanged, [&](const QString& text) {
    QFile file(path + ".new");
    if (file.open(QIODevice::WriteOnly)) file.write(text.toUtf8());
    file.close();
    QFile::remove(path);
    file.rename(path);
  });
  if (argc > 2) line.setText(QString::fromLocal8Bit(argv[2]));
  if (argc > 3) line.copyDelay = QString::fromLocal8Bit(argv[3]).toInt();
  line.selectAll();
  line.show();
  return QApplication::exec();
}

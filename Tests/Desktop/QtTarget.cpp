// A Qt program with one line of text, for copying from and pasting into: `qt_target FILE [TEXT]`
// keeps FILE equal to what the line holds.
#include <QtCore/QFile>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  if (argc < 2) return 2;
  QLineEdit line;
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
  line.selectAll();
  line.show();
  return QApplication::exec();
}

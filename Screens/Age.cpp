#include "Screens/Age.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>

namespace zephyx {

std::int64_t nowEpochMs() {
  return QDateTime::currentMSecsSinceEpoch();
}

QString ageText(std::int64_t thenEpochMs, std::int64_t nowEpochMs) {
  const std::int64_t minutes = (nowEpochMs - thenEpochMs) / 60'000;
  if (minutes < 1) return QStringLiteral("now");
  if (minutes < 60) return QStringLiteral("%1 min").arg(minutes);
  const QDate then = QDateTime::fromMSecsSinceEpoch(thenEpochMs).date();
  const QDate today = QDateTime::fromMSecsSinceEpoch(nowEpochMs).date();
  const qint64 days = then.daysTo(today);
  if (days == 0 || minutes < 12 * 60) return QStringLiteral("%1 h").arg(minutes / 60);
  if (days == 1) return QStringLiteral("yesterday");
  if (days < 7) return QStringLiteral("%1 days").arg(days);
  const auto format =
      then.year() == today.year() ? QLatin1String("d MMM") : QLatin1String("d MMM yyyy");
  return QLocale::c().toString(then, format);
}

}  // namespace zephyx

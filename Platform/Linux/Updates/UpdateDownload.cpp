#include "Platform/Linux/Updates/UpdateDownload.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <algorithm>
#include <utility>

#include "Platform/Dispatch.h"
#include "Platform/Linux/Updates/UpdateConfiguration.h"
#include "Platform/Linux/Updates/UpdateSignature.h"
#include "Platform/Linux/Updates/UpdateTransfer.h"
#include "Platform/PrivateFile.h"

namespace zephyx {
namespace {

constexpr qsizetype longestSuffix = 16;

/// A name of the program's own making, with the suffix by which the desktop knows what opens it.
QString fileName(const AppcastItem& item) {
  auto suffix = QFileInfo(item.url.fileName()).suffix().toLower().left(longestSuffix);
  const bool isPlain = std::all_of(suffix.begin(), suffix.end(), [](QChar each) {
    return each.unicode() < 0x80 && each.isLetterOrNumber();
  });
  if (suffix.isEmpty() || !isPlain) suffix = QStringLiteral("bin");
  return QStringLiteral("zephyx-%1.%2").arg(item.version, suffix);
}

}  // namespace

UpdateDownload::UpdateDownload(const UpdateConfiguration& configuration, AppcastItem item,
                               DispatchQueue& main, DispatchQueue& background, Handlers handlers)
    : configuration_(configuration),
      item_(std::move(item)),
      main_(main),
      background_(background),
      handlers_(std::move(handlers)),
      path_(configuration.folder + QLatin1Char('/') + fileName(item_)),
      file_(path_ + QStringLiteral(".part")) {}

UpdateDownload::~UpdateDownload() {
  if (!isKept_) file_.remove();
}

void UpdateDownload::start(QNetworkAccessManager& network) {
  if (!openFile()) {
    return main_.async(
        lifetime_.wrap([this] { refuse(QStringLiteral("there is no place on the disk for it")); }));
  }
  const auto& limits = configuration_.limits;
  const UpdateTransfer::Bounds bounds{item_.length, limits.patience,
                                      std::min(limits.progress, item_.length)};
  transfer_ = std::make_unique<UpdateTransfer>(
      network, configuration_, item_.url, bounds,
      [this](const QByteArray& bytes) {
        if (file_.write(bytes) != bytes.size()) return false;
        handlers_.progressed(file_.pos());
        return true;
      },
      [this](const QString& failure) { transferred(failure); });
}

bool UpdateDownload::openFile() {
  QDir folder(configuration_.folder);
  if (!makePrivateFolder(folder.path().toStdString())) return false;
  for (const auto& name : folder.entryList(QDir::Files | QDir::Hidden)) folder.remove(name);
  return file_.open(QIODevice::WriteOnly | QIODevice::NewOnly,
                    QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

void UpdateDownload::transferred(const QString& failure) {
  if (!failure.isEmpty()) return refuse(failure);
  if (!file_.flush()) return refuse(QStringLiteral("it could not be written to the disk"));
  if (file_.size() != item_.length) {
    return refuse(QStringLiteral("it is not as long as the feed says"));
  }
  file_.close();
  handlers_.verifying();
  background_.async([&main = main_, key = configuration_.publicKey, signature = item_.signature,
                     path = file_.fileName(),
                     done = lifetime_.wrap([this](bool isGenuine) { verified(isGenuine); })] {
    main.async([done, isGenuine = isSignedBy(key, signature, path)]() mutable { done(isGenuine); });
  });
}

void UpdateDownload::verified(bool isGenuine) {
  if (!isGenuine) {
    return refuse(QStringLiteral("its signature is not by those who make Zephyx"));
  }
  if (!file_.rename(path_)) return refuse(QStringLiteral("it could not be kept"));
  isKept_ = true;
  const auto ended = handlers_.ended;
  ended(path_);
}

void UpdateDownload::refuse(const QString& reason) {
  file_.remove();
  const auto ended = handlers_.ended;
  ended(UpdateRefusal{
      QStringLiteral("Zephyx %1 was not installed: %2.").arg(item_.displayVersion, reason)});
}

}  // namespace zephyx

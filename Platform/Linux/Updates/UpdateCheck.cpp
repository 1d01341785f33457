#include "Platform/Linux/Updates/UpdateCheck.h"

#include <utility>

#include "Platform/Linux/Updates/UpdateConfiguration.h"
#include "Platform/Linux/Updates/UpdateTransfer.h"

namespace zephyx {

UpdateCheck::UpdateCheck(QNetworkAccessManager& network, const UpdateConfiguration& configuration,
                         Completion completion)
    : configuration_(configuration) {
  const auto& limits = configuration.limits;
  // A feed is small: all of it comes in the time, or none of it counts.
  const UpdateTransfer::Bounds bounds{limits.feedSize, limits.feedTime, limits.feedSize + 1};
  transfer_ = std::make_unique<UpdateTransfer>(
      network, configuration, configuration.feed, bounds,
      [this](const QByteArray& bytes) {
        feed_ += bytes;
        return true;
      },
      [this, completion = std::move(completion)](const QString& failure) {
        completion(choose(failure));
      });
}

UpdateCheck::~UpdateCheck() = default;

UpdateChoice UpdateCheck::choose(const QString& failure) const {
  if (!failure.isEmpty()) {
    return UpdateRefusal{QStringLiteral("The update feed could not be loaded: %1.").arg(failure)};
  }
  auto items = readAppcast(feed_, configuration_.feed);
  if (auto* refusal = std::get_if<UpdateRefusal>(&items)) return std::move(*refusal);
  return chooseUpdate(std::get<std::vector<AppcastItem>>(items), configuration_);
}

}  // namespace zephyx

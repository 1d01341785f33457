#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "Platform/View.h"
#include "Runner/AgentUsage.h"

namespace zephyx {

class Label;

/// What an agent's row unfolds: the week, limits of single models, and the tokens of each model.
class AgentUsageAccordion final : public View {
 public:
  AgentUsageAccordion();

  /// Nothing: there are no figures yet.
  void show(const std::optional<AgentUsage>& usage);
  /// How high it has to be for what it shows.
  double height() const;

  const Label& weeklyLabel() const { return *weeklyLabel_; }
  const std::vector<std::shared_ptr<Label>>& scopedLabels() const { return scopedLabels_; }

  struct ModelRow {
    std::shared_ptr<Label> name;
    std::shared_ptr<Label> counts;
  };
  const std::vector<ModelRow>& modelRows() const { return modelRows_; }

 protected:
  void layout() override;

 private:
  void removeLines();

  std::shared_ptr<Label> weeklyLabel_;
  std::shared_ptr<Label> tokensLabel_;
  std::vector<std::shared_ptr<Label>> scopedLabels_;
  std::vector<ModelRow> modelRows_;
};

}  // namespace zephyx

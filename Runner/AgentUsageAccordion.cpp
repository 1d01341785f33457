#include "Runner/AgentUsageAccordion.h"

#include <algorithm>
#include <utility>

#include "Platform/Label.h"
#include "Runner/AgentRowView.h"
#include "Runner/AgentUsageText.h"
#include "Runner/ClaudeUsageProvider.h"

namespace zephyx {
namespace {

constexpr std::size_t maximumScopedLimits = 3;
constexpr std::size_t maximumModels = 4;
constexpr double emptyHeight = 50;  // the week, the caption above the models, and the margins
constexpr double lineHeight = 18;
constexpr double topMargin = 2;
constexpr double captionGap = 6;
constexpr double nameWidth = 88;

constexpr Font lineFont{.size = 11, .monospacedDigits = true};
constexpr TextStyle lineStyle{.font = lineFont, .color = color::label};
constexpr TextStyle captionStyle{.font = {.size = 10, .weight = FontWeight::semibold},
                                 .color = color::secondaryLabel};
constexpr TextStyle countsStyle{
    .font = lineFont, .color = color::secondaryLabel, .alignment = TextAlignment::trailing};

}  // namespace

AgentUsageAccordion::AgentUsageAccordion()
    : weeklyLabel_(std::make_shared<Label>("", lineStyle)),
      tokensLabel_(std::make_shared<Label>("", captionStyle)) {
  addChild(weeklyLabel_);
  addChild(tokensLabel_);
}

void AgentUsageAccordion::removeLines() {
  for (const auto& label : std::exchange(scopedLabels_, {})) label->removeFromParent();
  for (const auto& row : std::exchange(modelRows_, {})) {
    row.name->removeFromParent();
    row.counts->removeFromParent();
  }
}

void AgentUsageAccordion::show(const std::optional<AgentUsage>& usage) {
  removeLines();
  if (!usage) {
    weeklyLabel_->setText("No figures yet");
    tokensLabel_->setText("Waiting for the service");
    return;
  }
  weeklyLabel_->setText(agentUsageText::week(*usage));
  tokensLabel_->setText(usage->models.empty() ? "No tokens used this session"
                                              : "Tokens this session");
  for (const auto& limit : usage->scopedWeekly) {
    if (scopedLabels_.size() == maximumScopedLimits) break;
    scopedLabels_.push_back(std::make_shared<Label>(agentUsageText::scopedWeek(limit), lineStyle));
    addChild(scopedLabels_.back());
  }
  for (const auto& model : usage->models) {
    if (modelRows_.size() == maximumModels) break;
    modelRows_.push_back(
        {std::make_shared<Label>(ClaudeUsageProvider::modelDisplayName(model.model), lineStyle),
         std::make_shared<Label>(agentUsageText::tokens(model), countsStyle)});
    addChild(modelRows_.back().name);
    addChild(modelRows_.back().counts);
  }
}

double AgentUsageAccordion::height() const {
  return emptyHeight + lineHeight * static_cast<double>(scopedLabels_.size() + modelRows_.size());
}

void AgentUsageAccordion::layout() {
  constexpr double left = AgentRowView::textLeft;
  const double width = std::max(0.0, bounds().size.width - left - AgentRowView::textRight);
  double top = bounds().size.height - topMargin;
  const auto place = [&](Label& label) {
    top -= lineHeight;
    label.setFrame({{left, top}, {width, lineHeight}});
  };
  place(*weeklyLabel_);
  for (const auto& label : scopedLabels_) place(*label);
  top -= captionGap;
  place(*tokensLabel_);
  for (const auto& row : modelRows_) {
    place(*row.counts);
    row.name->setFrame({{left, top}, {nameWidth, lineHeight}});
    row.counts->setFrame({{left + nameWidth, top}, {width - nameWidth, lineHeight}});
  }
}

}  // namespace zephyx

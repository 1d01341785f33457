#include "Screens/AgentSettings.h"

#include <QtCore/QVariant>
#include <algorithm>
#include <utility>

namespace zephyx {
namespace {

// To the host.
constexpr auto getMethod = "agentsVisibilityGet";
constexpr auto setMethod = "agentVisibilitySet";

/// The agent whose usage is known; the others have rows that wait for theirs.
constexpr auto knownAgent = "claude-code";

}  // namespace

int AgentSettings::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant AgentSettings::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const Row& row = rows_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case nameRole:
      return QString::fromStdString(row.name);
    case purposeRole:
      return row.id == knownAgent ? tr("Session and weekly use, and the tokens of each model.")
                                  : tr("Coming in a future update.");
    case shownRole:
      return row.shown;
    case problemRole:
      return row.problem;
    default:
      return {};
  }
}

QHash<int, QByteArray> AgentSettings::roleNames() const {
  return {
      {nameRole, "name"}, {purposeRole, "purpose"}, {shownRole, "shown"}, {problemRole, "problem"}};
}

void AgentSettings::refresh() {
  channel_.invokeMethod(getMethod, {},
                        guard_.wrap([this](const MethodReply& reply) { takeAll(reply); }));
}

void AgentSettings::takeAll(const MethodReply& reply) {
  const auto* value = std::get_if<Value>(&reply);
  const List* list = value ? value->asList() : nullptr;
  if (!list) return;
  beginResetModel();
  rows_.clear();
  for (const Value& payload : *list) {
    const Map* map = payload.asMap();
    const Value* id = map ? map->find("id") : nullptr;
    const Value* name = map ? map->find("name") : nullptr;
    const Value* shown = map ? map->find("visible") : nullptr;
    if (!id || !name || !shown || !id->asString() || !name->asString() || !shown->asBool())
      continue;
    rows_.push_back({*id->asString(), *name->asString(), *shown->asBool(), {}});
  }
  endResetModel();
}

void AgentSettings::setShown(int row, bool shown) {
  if (row < 0 || row >= rowCount()) return;
  Row& changed = rows_[static_cast<std::size_t>(row)];
  changed.shown = shown;
  changed.problem.clear();
  emit dataChanged(index(row), index(row));
  channel_.invokeMethod(setMethod, Map{{"id", changed.id}, {"visible", shown}},
                        guard_.wrap([this, id = changed.id, shown](const MethodReply& reply) {
                          takeOne(id, shown, reply);
                        }));
}

void AgentSettings::takeOne(const std::string& id, bool wanted, const MethodReply& reply) {
  if (std::holds_alternative<Value>(reply)) return;
  const auto found =
      std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) { return row.id == id; });
  if (found == rows_.end()) return;
  found->shown = !wanted;
  const auto* error = std::get_if<MethodError>(&reply);
  found->problem = error && !error->message.empty() ? QString::fromStdString(error->message)
                                                    : tr("This could not be done.");
  const auto changed = index(static_cast<int>(found - rows_.begin()));
  emit dataChanged(changed, changed);
}

}  // namespace zephyx

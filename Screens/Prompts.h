#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantList>

namespace zephyx {

/// What the model is told before the text. `direction` is "<from>-<to>" in language codes, "auto"
/// for a language that is to be recognised; `tone` is one of `toneChoices`. What is not known
/// counts as the first choice.
QString prompt(const QString& mode, const QString& direction, const QString& tone);

/// Maps of "id" and "label", in the order of showing.
QVariantList directionChoices();
QVariantList toneChoices();

}  // namespace zephyx

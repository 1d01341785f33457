#pragma once

#include <QtCore/QString>

namespace zephyx {

/// What release notes in HTML may be made of: paragraphs, headings, lists, emphasis, code, and
/// links to web pages. Everything else is left out, the text in it is kept, except that of scripts
/// and style sheets.
QString limitedRichText(const QString& html);

}  // namespace zephyx

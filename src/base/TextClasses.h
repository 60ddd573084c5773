#pragma once

#include <QString>
#include <QStringView>

/// Unicode letters, marks and numbers.
bool isAlphanumeric(char32_t character);

/// Blank, tab and the other Unicode space separators; line breaks are not among them.
bool isHorizontalSpace(char32_t character);

/// `text` without horizontal white space at both ends.
QString trimmedHorizontally(const QString &text);
QStringView trimmedHorizontally(QStringView text);

/// `text` with everything that could start a new line, command a terminal or turn the writing direction of
/// what follows replaced by blanks: control characters, line separators, directional controls.
QString onOneLine(QString text);

/// The first `count` user-perceived characters (grapheme clusters) of `text`; all of it when it has no more.
QString firstCharacters(const QString &text, qsizetype count);

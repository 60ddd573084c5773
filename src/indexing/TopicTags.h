#pragma once

#include <QString>
#include <QStringList>

/// Characters (user-perceived) of a paper's text that its topics are looked for in. Chosen: the abstract and
/// the introduction name what a paper is about.
inline constexpr qsizetype kTopicTextCharacters = 8000;

/// The topics of a paper, in table order. A topic is given when a subject of its book record contains one of
/// the keywords or is the topic's name, when one keyword stands in the title, or when two different keywords
/// stand in the first 8,000 characters of the text; keywords in title and text are whole words. Case is
/// ignored throughout. Call from any thread.
QStringList topicTags(const QString &title, const QString &text, const QStringList &subjects);

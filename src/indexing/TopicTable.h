#pragma once

#include <QRegularExpression>
#include <QString>
#include <vector>

/// One keyword of a topic, in lower case.
struct TopicKeyword {
    QString text;
    QRegularExpression expression; ///< finds it as a whole word, case ignored
    size_t number = 0;             ///< 0-based, through all topics in table order
};

/// A topic that papers are tagged with.
struct Topic {
    QString name;      ///< the tag
    bool flag = false; ///< kept with the table; no rule asks for it
    std::vector<TopicKeyword> keywords;
};

/// The sixteen topics, in table order. Built on first use, read-only afterwards; call from any thread.
const std::vector<Topic> &topicTable();

/// How many keywords the table has in all.
size_t topicKeywordCount();

/// Whether `tag` is the name of a topic.
bool isTopicName(const QString &tag);

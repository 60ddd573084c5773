#include "indexing/TopicTags.h"

#include "base/TextClasses.h"
#include "indexing/KeywordFilter.h"
#include "indexing/TopicTable.h"

#include <algorithm>

namespace
{
/// A text to look for whole words in.
class SearchedText
{
public:
    explicit SearchedText(const QString &text)
        : m_text(text.toLower())
        , m_possible(possibleKeywords(m_text))
    {
    }

    /// Whether at least `count` different keywords of the topic occur.
    bool mentions(const Topic &topic, int count) const
    {
        return std::any_of(topic.keywords.begin(), topic.keywords.end(), [&](const TopicKeyword &keyword) {
            if (m_possible[keyword.number] && keyword.expression.match(m_text).hasMatch())
                --count;
            return count == 0;
        });
    }

private:
    QString m_text;
    std::vector<bool> m_possible;
};

bool isSubject(const Topic &topic, const QStringList &loweredSubjects)
{
    return std::any_of(loweredSubjects.begin(), loweredSubjects.end(), [&](const QString &subject) {
        return subject == topic.name.toLower() ||
               std::any_of(topic.keywords.begin(), topic.keywords.end(),
                           [&](const TopicKeyword &keyword) { return subject.contains(keyword.text); });
    });
}

QStringList lowered(QStringList texts)
{
    for (QString &text : texts)
        text = text.toLower();
    return texts;
}
} // namespace

QStringList topicTags(const QString &title, const QString &text, const QStringList &subjects)
{
    const QStringList loweredSubjects = lowered(subjects);
    const SearchedText searchedTitle(title);
    const SearchedText searchedText(firstCharacters(text, kTopicTextCharacters));
    QStringList tags;
    for (const Topic &topic : topicTable()) {
        if (isSubject(topic, loweredSubjects) || searchedTitle.mentions(topic, 1) ||
            searchedText.mentions(topic, 2))
            tags.append(topic.name);
    }
    return tags;
}

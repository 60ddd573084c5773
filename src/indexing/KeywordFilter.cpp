#include "indexing/KeywordFilter.h"

#include "indexing/TopicTable.h"

#include <array>

namespace
{
using KeywordList = std::vector<const TopicKeyword *>;

/// Of all characters in lower case, only the long s equals a letter of the keywords when case is ignored.
constexpr char16_t kLongS = u'\u017F';

constexpr char16_t plain(QChar c)
{
    return c.unicode() == kLongS ? u's' : c.unicode();
}

constexpr bool isLetter(char16_t c)
{
    return c >= u'a' && c <= u'z';
}

/// The table's keywords by their first letter; every one begins with a letter.
std::array<KeywordList, 26> listsByFirstLetter()
{
    std::array<KeywordList, 26> lists;
    for (const Topic &topic : topicTable()) {
        for (const TopicKeyword &keyword : topic.keywords)
            lists[static_cast<size_t>(keyword.text.front().unicode() - u'a')].push_back(&keyword);
    }
    return lists;
}

bool beginsWith(QStringView text, const QString &keyword)
{
    if (text.size() < keyword.size())
        return false;
    for (qsizetype i = 0; i < keyword.size(); ++i) {
        if (plain(text[i]) != keyword[i].unicode())
            return false;
    }
    return true;
}
} // namespace

std::vector<bool> possibleKeywords(const QString &lowered)
{
    static const std::array<KeywordList, 26> lists = listsByFirstLetter();
    std::vector<bool> possible(topicKeywordCount());
    bool isInWord = false;
    for (qsizetype i = 0; i < lowered.size(); ++i) {
        const char16_t c = plain(lowered[i]);
        if (isLetter(c) && !isInWord) {
            for (const TopicKeyword *keyword : lists[static_cast<size_t>(c - u'a')]) {
                if (beginsWith(QStringView(lowered).sliced(i), keyword->text))
                    possible[keyword->number] = true;
            }
        }
        isInWord = isLetter(c);
    }
    return possible;
}

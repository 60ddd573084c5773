#include "updates/DottedVersion.h"

#include <QRegularExpression>
#include <QStringList>

std::optional<DottedVersion> DottedVersion::fromText(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("\\A[0-9]{1,9}(\\.[0-9]{1,9}){0,7}\\z"));
    if (!form.match(text).hasMatch())
        return {};
    DottedVersion version;
    version.m_text = text;
    const QStringList numbers = text.split(u'.');
    for (const QString &number : numbers)
        version.m_numbers.push_back(number.toInt());
    while (!version.m_numbers.empty() && version.m_numbers.back() == 0)
        version.m_numbers.pop_back();
    return version;
}

#include "ui/TagField.h"

#include "app/LibraryViewModel.h"
#include "ui/ClaimKeys.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QStringListModel>

TagField::TagField(QWidget *parent)
    : QLineEdit(parent)
    , m_knownTags(new QStringListModel(this))
{
    setObjectName(QStringLiteral("tagField"));
    setAccessibleName(QStringLiteral("Add tag"));
    setPlaceholderText(QStringLiteral("Add Tag"));
    auto *completer = new QCompleter(m_knownTags, this);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->popup()->setAccessibleName(QStringLiteral("Known tags"));
    setCompleter(completer);
    // Later: the completer puts its choice into the field after everyone has heard of it.
    connect(
        completer, qOverload<const QString &>(&QCompleter::activated), this,
        [this](const QString &completion) {
            setText(completion);
            enter();
        },
        Qt::QueuedConnection);
    connect(this, &QLineEdit::returnPressed, this, [this] {
        if (!isChoosingCompletion())
            enter();
    });
}

void TagField::setKnownTags(const QStringList &tags)
{
    if (m_knownTags->stringList() != tags)
        m_knownTags->setStringList(tags);
}

bool TagField::isChoosingCompletion() const
{
    const QAbstractItemView *popup = completer()->popup();
    return popup->isVisible() && popup->currentIndex().isValid();
}

void TagField::enter()
{
    const QString name = text().trimmed();
    if (name.isEmpty())
        return clear();
    if (const QString problem = tagNameProblem(name); !problem.isEmpty())
        return void(Q_EMIT refused(problem));
    clear();
    Q_EMIT tagEntered(name);
}

bool TagField::event(QEvent *event)
{
    return (!text().isEmpty() && claimKeys(event, {Qt::Key_Escape})) || QLineEdit::event(event);
}

void TagField::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && !text().isEmpty() && !completer()->popup()->isVisible())
        clear();
    else
        QLineEdit::keyPressEvent(event);
}

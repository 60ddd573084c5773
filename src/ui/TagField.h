#pragma once

#include <QLineEdit>

class QStringListModel;

/// The field that adds a tag. Return, or a choice among the completions, hands the trimmed name over and
/// empties the field; a blank name does nothing and a refused one stays. Escape empties it.
class TagField : public QLineEdit
{
    Q_OBJECT

public:
    explicit TagField(QWidget *parent = nullptr);

    /// The names to complete from, ignoring case.
    void setKnownTags(const QStringList &tags);

Q_SIGNALS:
    void tagEntered(const QString &name);
    /// `reason` is why the name in the field cannot be a tag.
    void refused(const QString &reason);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool isChoosingCompletion() const;
    void enter();

    QStringListModel *m_knownTags;
};

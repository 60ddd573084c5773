#pragma once

#include <QJsonDocument>
#include <QString>

/// Where a command's answer goes. Standard output holds the answer and nothing else; everything said about
/// the work itself goes to standard error. Use from one thread.
class Output
{
public:
    enum class Form { Text, Json };

    explicit Output(Form form);

    bool isJson() const { return m_form == Form::Json; }

    /// One line of the answer.
    void line(const QString &text) const;
    /// The whole answer as one JSON document.
    void json(const QJsonDocument &document) const;
    /// Whether all of the answer could be written so far; when not, that was said as a failure.
    bool isComplete() const { return m_isComplete; }

    /// One line about a failure, made safe by `onOneLine`.
    void failure(const QString &text) const;
    /// Replaces the progress line on a terminal; nothing elsewhere. An empty text removes it.
    void progress(const QString &text) const;

    /// `text` in bold on a terminal, as it is elsewhere.
    QString emphasised(const QString &text) const;
    /// `text` dimmed on a terminal, as it is elsewhere.
    QString dimmed(const QString &text) const;

private:
    void answer(const QByteArray &bytes) const;

    Form m_form;
    bool m_answersToTerminal;
    bool m_reportsToTerminal;
    mutable bool m_isComplete = true;
};

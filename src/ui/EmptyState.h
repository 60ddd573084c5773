#pragma once

#include "ui/Symbols.h"

#include <QWidget>
#include <optional>

class QLabel;

/// A symbol, a title and a text in the middle of a place that has nothing else to show.
class EmptyState : public QWidget
{
    Q_OBJECT

public:
    struct Texts {
        QString title;
        QString text; ///< may be empty
        std::optional<Symbol> symbol;
    };
    explicit EmptyState(const Texts &texts, QWidget *parent = nullptr);

    void setTexts(const Texts &texts);

protected:
    void changeEvent(QEvent *event) override;

private:
    void drawSymbol();

    std::optional<Symbol> m_symbol;
    QLabel *m_picture;
    QLabel *m_title;
    QLabel *m_text;
};

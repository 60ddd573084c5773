#include "reader/ReaderSearchField.h"

#include "reader/PDFViewerController.h"
#include "reader/ReaderSymbols.h"

#include <QKeyEvent>

ReaderSearchField::ReaderSearchField(PDFViewerController &controller, QWidget *parent)
    : QLineEdit(controller.searchText.value(), parent)
    , m_controller(controller)
{
    setObjectName(QStringLiteral("readerSearchField"));
    setAccessibleName(QStringLiteral("Search this paper"));
    setPlaceholderText(QStringLiteral("Power Search (e.g. attention AND transformer*)"));
    setClearButtonEnabled(true);
    addAction(readerIcon(ReaderSymbol::Search), LeadingPosition);
    connect(this, &QLineEdit::textChanged, this,
            [this](const QString &text) { m_controller.searchText = text; });
    m_observer = m_controller.searchText.addNotifier([this] {
        if (text() != m_controller.searchText.value())
            setText(m_controller.searchText.value());
    });
}

void ReaderSearchField::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        event->modifiers().testFlag(Qt::ShiftModifier) ? m_controller.goToPreviousHit()
                                                       : m_controller.submitSearch();
        return;
    case Qt::Key_Escape:
        clear();
        Q_EMIT leaving();
        return;
    case Qt::Key_Down:
        Q_EMIT leaving();
        return;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

#include "reader/ReaderSearchField.h"

#include "reader/PDFViewerController.h"

#include <QKeyEvent>

namespace
{
/// Of the symbols at both ends, in heights of the field.
constexpr int kRoomForSymbols = 3;
} // namespace

ReaderSearchField::ReaderSearchField(PDFViewerController &controller, QWidget *parent)
    : QLineEdit(controller.searchText.value(), parent)
    , m_controller(controller)
{
    setObjectName(QStringLiteral("readerSearchField"));
    setAccessibleName(QStringLiteral("Search this paper"));
    setPlaceholderText(QStringLiteral("Power Search (e.g. attention AND transformer*)"));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(this, &QLineEdit::textChanged, this,
            [this](const QString &text) { m_controller.searchText = text; });
    // Not before there is something to clear: its icon takes milliseconds to find, and the page waits.
    connect(this, &QLineEdit::textChanged, this, [this] { setClearButtonEnabled(true); });
    m_observer = m_controller.searchText.addNotifier([this] {
        if (text() != m_controller.searchText.value())
            setText(m_controller.searchText.value());
    });
}

QSize ReaderSearchField::sizeHint() const
{
    const QSize usual = QLineEdit::sizeHint();
    return {fontMetrics().horizontalAdvance(placeholderText()) + kRoomForSymbols * usual.height(),
            usual.height()};
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

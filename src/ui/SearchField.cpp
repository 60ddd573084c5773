#include "ui/SearchField.h"

#include "app/LibraryViewModel.h"
#include "ui/Symbols.h"

#include <QAction>
#include <QKeyEvent>

SearchField::SearchField(LibraryViewModel &vm, QWidget *parent)
    : QLineEdit(vm.queryText.value(), parent)
    , m_vm(vm)
{
    setObjectName(QStringLiteral("searchField"));
    setAccessibleName(QStringLiteral("Search the library"));
    setPlaceholderText(QStringLiteral("Search text, or filter with author: title: filename: year:"));
    setClearButtonEnabled(true);
    // Files dropped here are meant for the library; the field would take their addresses as text.
    setAcceptDrops(false);
    addAction(symbolIcon(Symbol::Search), LeadingPosition);

    connect(this, &QLineEdit::textChanged, this, [this](const QString &text) { m_vm.queryText = text; });
    m_observers.push_back(m_vm.queryText.addNotifier([this] {
        if (text() != m_vm.queryText.value())
            setText(m_vm.queryText.value());
    }));
    m_observers.push_back(m_vm.searchFocusRequest.addNotifier([this] {
        setFocus(Qt::ShortcutFocusReason);
        selectAll();
    }));
}

void SearchField::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    if (key == Qt::Key_Escape)
        clear();
    if (key == Qt::Key_Escape || key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter) {
        Q_EMIT leaving();
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

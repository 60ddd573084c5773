#include "reader/ReaderToolBar.h"

#include "reader/PageField.h"
#include "reader/ReaderActions.h"
#include "reader/ReaderSearchField.h"

#include <QAction>
#include <QToolButton>

namespace
{
constexpr QSize kIconSize(22, 22);
constexpr int kLeastSearchWidth = 140;
} // namespace

ReaderToolBar::ReaderToolBar(ReaderActions &actions, PDFViewerController &controller, QWidget *parent)
    : QToolBar(QStringLiteral("Reader"), parent)
    , m_pageField(new PageField(controller, this))
    , m_searchField(new ReaderSearchField(controller, this))
{
    setObjectName(QStringLiteral("readerToolBar"));
    setMovable(false);
    setFloatable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setIconSize(kIconSize);
    m_searchField->setMinimumWidth(kLeastSearchWidth);
    m_searchField->addAction(actions.find, QLineEdit::LeadingPosition);

    addActions({actions.sidebar, actions.back, actions.forward});
    addSeparator();
    addActions({actions.zoomOut, actions.actualSize, actions.zoomIn});
    addSeparator();
    addWidget(m_pageField);
    auto *space = new QWidget(this);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(space);
    addWidget(m_searchField);
    addSeparator();
    addActions({actions.bookmarkSelection, actions.darkMode, actions.rotateRight});
    addMenu(actions.more);
}

void ReaderToolBar::addMenu(QAction *action)
{
    addAction(action);
    auto *button = qobject_cast<QToolButton *>(widgetForAction(action));
    button->setObjectName(action->objectName());
    button->setPopupMode(QToolButton::InstantPopup);
}

#pragma once

#include <QProperty>
#include <QWidget>
#include <vector>

class LibraryViewModel;
class QTreeView;
class SidebarModel;
class TrashTarget;

/// The library window's sidebar. What is selected in it is the view model's `currentSidebarItem`.
class Sidebar : public QWidget
{
    Q_OBJECT

public:
    explicit Sidebar(LibraryViewModel &vm, QWidget *parent = nullptr);

    /// Shows the trash while a card is dragged.
    void setCardDragged(bool isDragged);

Q_SIGNALS:
    void newTagRequested();
    void renameTagRequested(const QString &name);
    void deleteTagRequested(const QString &name);

private:
    void setUpView();
    void addNewTagButton();
    void followSelection();
    void showSelection();
    void showMenu(QPoint position); ///< in the view's viewport

    LibraryViewModel &m_vm;
    SidebarModel *m_model;
    QTreeView *m_view;
    TrashTarget *m_trash;
    bool m_rowsAreChanging = false; ///< the view moves its current row by itself then
    std::vector<QPropertyNotifier> m_observers;
};

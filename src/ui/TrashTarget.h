#pragma once

#include <QFrame>
#include <QProperty>
#include <vector>

class LibraryViewModel;

/// The place to drop a card on to remove its paper from the library. The owner shows it while one is dragged.
class TrashTarget : public QFrame
{
    Q_OBJECT

public:
    explicit TrashTarget(LibraryViewModel &vm, QWidget *parent = nullptr);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    LibraryViewModel &m_vm;
    std::vector<QPropertyNotifier> m_observers;
};

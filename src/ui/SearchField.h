#pragma once

#include <QLineEdit>
#include <QProperty>
#include <vector>

class LibraryViewModel;

/// The library's search field: its text is the view model's query.
class SearchField : public QLineEdit
{
    Q_OBJECT

public:
    explicit SearchField(LibraryViewModel &vm, QWidget *parent = nullptr);

Q_SIGNALS:
    /// Focus wants to go on into what the search is about: after Escape, Down or Return.
    void leaving();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    LibraryViewModel &m_vm;
    std::vector<QPropertyNotifier> m_observers;
};

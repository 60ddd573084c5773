#pragma once

#include <QObject>

class LibraryViewModel;
class QWidget;

/// The alerts that ask before tags are made, renamed, deleted or given to many papers. Each returns at once.
class TagAlerts : public QObject
{
    Q_OBJECT

public:
    TagAlerts(LibraryViewModel &vm, QWidget *window);

    void newTag();
    void renameTag(const QString &name);
    void deleteTag(const QString &name);
    void tagAll();

private:
    LibraryViewModel &m_vm;
    QWidget *m_window;
};

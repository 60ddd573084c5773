#pragma once

#include "app/LibraryViewModel.h"

#include <QWidget>

class FieldProblem;
class TagChips;
class TagField;

/// The tags of the paper that the detail panel shows: chips that can be removed, and a field to add one.
class TagEditor : public QWidget
{
    Q_OBJECT

public:
    explicit TagEditor(LibraryViewModel &vm, QWidget *parent = nullptr);

    /// What is being typed stays when `paper` is the one that is shown, and goes when it is another.
    void setPaper(const Paper &paper);
    void focusField();

private:
    void add(const QString &tag);
    void updateKnownTags();

    LibraryViewModel &m_vm;
    Paper m_paper;
    TagChips *m_chips;
    TagField *m_field;
    FieldProblem *m_problem;
    QPropertyNotifier m_tagsObserver;
};

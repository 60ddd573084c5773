#pragma once

#include "reader/ListOrHint.h"
#include "reader/OutlineModel.h"

#include <QProperty>
#include <vector>

class PDFView;
class PDFViewerController;
class QTreeView;

/// The document's outline as a tree; a click or Return goes there.
class OutlinePane : public ListOrHint
{
    Q_OBJECT

public:
    /// Both must outlive the pane.
    OutlinePane(PDFViewerController &controller, PDFView &view, QWidget *parent = nullptr);

private:
    OutlinePane(PDFViewerController &controller, PDFView &view, QTreeView *tree, QWidget *parent);
    void showOutline();
    void explainEmptiness();
    void open(const QModelIndex &index);

    PDFViewerController &m_controller;
    PDFView &m_view;
    QTreeView *m_tree;
    OutlineModel m_model;
    std::vector<QPropertyNotifier> m_observers;
};

#pragma once

#include "reader/ListOrHint.h"

#include <QProperty>
#include <vector>

class PDFViewerController;
class PassageList;

/// The hits of the search in the paper, the current one marked.
class SearchPane : public ListOrHint
{
    Q_OBJECT

public:
    /// `controller` must outlive the pane.
    explicit SearchPane(PDFViewerController &controller, QWidget *parent = nullptr);

private:
    SearchPane(PDFViewerController &controller, PassageList *hits, QWidget *parent);
    void showHits();
    QString whyEmpty() const;

    PDFViewerController &m_controller;
    PassageList *m_hits;
    std::vector<QPropertyNotifier> m_observers;
};

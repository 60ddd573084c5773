#include "reader/SelectionCopier.h"

SelectionCopier::SelectionCopier(const TextSelector &selector, PageSource &source,
                                 const PageContents &contents, std::function<void(const QString &text)> done)
    : m_selector(selector)
    , m_source(source)
    , m_contents(contents)
    , m_done(std::move(done))
    , m_page(selector.pages().first)
{
}

SelectionCopier::~SelectionCopier()
{
    m_stop.request_stop();
}

void SelectionCopier::start()
{
    const qint64 last = m_selector.pages().last;
    while (m_page <= last && m_missingPages < kMostMissingPages) {
        const PDFPageText *text = m_contents.text(m_page);
        if (!text && m_source.isOpen())
            return ask();
        if (text)
            add(*text);
        ++m_page;
    }
    m_done(m_text);
}

void SelectionCopier::add(const PDFPageText &text)
{
    m_missingPages = 0;
    const QString selected = text.string(m_selector.rangeOn(m_page, text));
    if (!m_text.isEmpty() && !m_text.endsWith(u'\n') && !selected.isEmpty())
        m_text += u'\n';
    m_text += selected;
}

void SelectionCopier::ask()
{
    const PlannedJob job = {{PageJob::Kind::Text, m_page, {}}, false};
    m_source.ask(job, m_stop.get_token(),
                 [this, alive = std::weak_ptr<const bool>(m_alive)](const Result<PageAnswer> &answer) {
                     if (!alive.expired())
                         answered(answer);
                 });
}

void SelectionCopier::answered(const Result<PageAnswer> &answer)
{
    if (answer)
        add(std::get<PDFPageText>(*answer));
    else
        ++m_missingPages;
    ++m_page;
    start();
}

#include "reader/PageField.h"

#include "reader/PDFViewerController.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

namespace
{
/// Digits for which the field has room at least, so that it does not move while pages go by.
constexpr int kLeastDigits = 4;
constexpr int kFieldPadding = 16;
/// Beyond it a page's own label is cut. Chosen: "Appendix B-12" fits.
constexpr int kMostLabelCharacters = 14;
/// Pages whose labels are looked at for the room that they need. Chosen: more than most books have.
constexpr qint64 kMostMeasuredPages = 2000;

int digitsOf(qint64 number)
{
    return int(QString::number(number).size());
}
} // namespace

PageField::PageField(PDFViewerController &controller, QWidget *parent)
    : QWidget(parent)
    , m_controller(controller)
    , m_number(new QLineEdit(this))
    , m_count(new QLabel(this))
{
    setObjectName(QStringLiteral("pageField"));
    m_number->setObjectName(QStringLiteral("pageNumber"));
    m_number->setAccessibleName(QStringLiteral("Page number"));
    m_number->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_number->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    m_number->installEventFilter(this);
    m_count->setObjectName(QStringLiteral("pageCount"));
    m_count->setTextFormat(Qt::PlainText); // a page's label may look like markup
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 0, 4, 0);
    layout->addWidget(m_number);
    layout->addWidget(m_count);

    connect(m_number, &QLineEdit::returnPressed, this, [this] {
        m_controller.goToPageText(m_number->text());
        Q_EMIT done();
    });
    m_observers.push_back(m_controller.currentPage.addNotifier([this] { showPage(); }));
    const auto countChanged = [this] {
        makeRoom();
        showCount();
    };
    m_observers.push_back(m_controller.pageCount.addNotifier(countChanged));
    m_observers.push_back(m_controller.pageLabels.addNotifier(countChanged));
    makeRoom();
    showPage();
}

void PageField::edit()
{
    m_number->setFocus(Qt::ShortcutFocusReason);
    m_number->selectAll();
}

void PageField::showPage()
{
    m_number->setText(QString::number(m_controller.currentPage));
    showCount();
}

void PageField::showCount()
{
    const qint64 count = m_controller.pageCount;
    const int digits = std::max(kLeastDigits, digitsOf(count));
    m_number->setFixedWidth(digits * m_number->fontMetrics().horizontalAdvance(u'0') + kFieldPadding);
    m_number->setEnabled(count > 0);
    m_count->setText(count > 0 ? textFor(m_controller.currentPage) : QString());
}

QString PageField::textFor(qint64 pageNumber) const
{
    const QString count = u"of " + QString::number(m_controller.pageCount);
    const PDFPageLabels &labels = m_controller.pageLabels.value();
    const QString label = labels.isEmpty() ? QString() : labels.label(pageNumber - 1);
    if (label.isEmpty() || label == QString::number(pageNumber))
        return count;
    return u"(" + label.left(kMostLabelCharacters) + u") " + count;
}

void PageField::makeRoom()
{
    const QFontMetrics metrics = m_count->fontMetrics();
    int width = metrics.horizontalAdvance(QStringLiteral("(xviii) of 0000"));
    const qint64 pages = m_controller.pageLabels.value().isEmpty()
                             ? 1
                             : std::min<qint64>(m_controller.pageCount, kMostMeasuredPages);
    for (qint64 page = 1; page <= pages; ++page)
        width = std::max(width, metrics.horizontalAdvance(textFor(page)));
    m_count->setMinimumWidth(width);
}

bool PageField::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        showPage();
        Q_EMIT done();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

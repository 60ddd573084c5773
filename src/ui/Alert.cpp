#include "ui/Alert.h"

#include <QLabel>
#include <QPushButton>

namespace
{
constexpr int kTextWidthPx = 280; ///< chosen: a short message stays on its line

// The box's own labels: titles and paths that look like HTML are not.
void setPlainText(const QMessageBox *box, const QString &labelName, bool isBold)
{
    auto *label = box->findChild<QLabel *>(labelName);
    label->setTextFormat(Qt::PlainText);
    QFont font = label->font();
    font.setBold(isBold);
    label->setFont(font);
    label->setMinimumWidth(kTextWidthPx);
}
} // namespace

QMessageBox *Alert::make(const Texts &texts, QMessageBox::Icon icon, QWidget *window)
{
    auto *box = new QMessageBox(icon, texts.title, texts.title, QMessageBox::NoButton, window);
    box->setObjectName(texts.name);
    box->setInformativeText(texts.message);
    setPlainText(box, QStringLiteral("qt_msgbox_label"), true);
    setPlainText(box, QStringLiteral("qt_msgbox_informativelabel"), false);
    box->setAccessibleName(texts.title);
    box->setAccessibleDescription(texts.message);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    return box;
}

void Alert::askBeforeDestroying(QMessageBox *box, const QString &button, std::function<void()> confirmed)
{
    const QPushButton *confirm = box->addButton(button, QMessageBox::DestructiveRole);
    QPushButton *cancel = box->addButton(QStringLiteral("Cancel"), QMessageBox::RejectRole);
    box->setDefaultButton(cancel);
    box->setEscapeButton(cancel);
    QObject::connect(confirm, &QPushButton::clicked, box, std::move(confirmed));
}

void Alert::addDismissButton(QMessageBox *box)
{
    QPushButton *dismiss = box->addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    box->setDefaultButton(dismiss);
    box->setEscapeButton(dismiss);
}

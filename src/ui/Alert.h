#pragma once

#include <QMessageBox>
#include <functional>

class QWidget;

/// The alerts' common manner: over their window only, never blocking, gone when closed.
namespace Alert
{
struct Texts {
    QString name; ///< object name
    QString title;
    QString message;
};

/// A box with `texts` and no buttons yet; `open()` shows it, closing deletes it.
QMessageBox *make(const Texts &texts, QMessageBox::Icon icon, QWidget *window);

/// Adds a button that does what the alert asks about, and "Cancel", which Return and Escape choose: what is
/// destroyed is never destroyed by a reflex.
void askBeforeDestroying(QMessageBox *box, const QString &button, std::function<void()> confirmed);

/// Adds the one button that dismisses the alert.
void addDismissButton(QMessageBox *box);
} // namespace Alert

#pragma once

#include "store/Paper.h"

#include <QPixmap>
#include <functional>
#include <optional>

class LibraryViewModel;
class QMenu;
class QMessageBox;
class QWidget;

/// One paper's card: what it shows and what can be done with it. Made when a card is painted or acted on,
/// not kept: a grid may have 100,000.
struct PaperGridItem {
    LibraryViewModel &vm; ///< must outlive the item's menu and alert
    Paper paper;
    std::optional<QString> passage; ///< among search results, with its "..." marks
    bool isSelected = false;
    std::function<void()> onSelect;
    std::function<void()> onDoubleClick;
    bool showingDeleteConfirmation = false; ///< the alert of this paper is open
    std::optional<QPixmap> image;           ///< the cover; absent while it is not read, or when there is none

    /// The context menu, to be shown by the caller; it deletes itself when closed. Its last entry calls
    /// `onRemove`.
    QMenu *makeContextMenu(QWidget *parent, const std::function<void()> &onRemove) const;
    /// Asks whether to remove the paper, and removes it on "Remove". Answers at once, with the alert, which
    /// deletes itself.
    QMessageBox *confirmRemoval(QWidget *window) const;
};

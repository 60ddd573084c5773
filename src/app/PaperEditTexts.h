#pragma once

#include "base/Result.h"
#include "store/NativeLibraryService.h"

#include <QString>

/// A paper's editable fields as the texts that a person types.
struct PaperEditTexts {
    QString title;
    QString authors;
    QString year; ///< empty for none

    static PaperEditTexts of(const Paper &paper);

    friend bool operator==(const PaperEditTexts &, const PaperEditTexts &) = default;
};

/// What to write when `before` was edited into `after`: only the fields that a person changed, so that what
/// others wrote to the rest meanwhile stays. Titles and authors are trimmed; a blank title and an empty year
/// leave what is stored, blank authors remove them. Fails, with a description for the person, when the year
/// is not a whole number.
Result<PaperEdit> paperEdit(const PaperEditTexts &before, const PaperEditTexts &after);

/// Whether `paper` has every value of `edit` already.
bool carries(const Paper &paper, const PaperEdit &edit);

#include "pdf/PDFDocument.h"

#include "support/Printing.h"

#include <QSet>
#include <gtest/gtest.h>

TEST(PDFDocument, EveryErrorCodeHasItsOwnDescription)
{
    QSet<QString> descriptions;
    for (int code = int(PDFErrorCode::NotAPDF); code <= int(PDFErrorCode::DeadlineExceeded); ++code) {
        const Error error = pdfError(PDFErrorCode(code), QStringLiteral("because"));
        EXPECT_TRUE(isPDFError(error, PDFErrorCode(code)));
        EXPECT_EQ(error.message(), QString(error.description + u": because"));
        descriptions.insert(error.description);
    }
    EXPECT_EQ(descriptions.size(), 8);
}

TEST(PDFDocument, TellsItsErrorsFromOthers)
{
    EXPECT_FALSE(isPDFError(pdfError(PDFErrorCode::Damaged), PDFErrorCode::NotAPDF));
    EXPECT_FALSE(
        isPDFError({QStringLiteral("Other"), int(PDFErrorCode::Damaged), {}, {}}, PDFErrorCode::Damaged));
}

TEST(PDFDocument, TellsErrorsThatLeaveNoEngineFromThoseOfAPageOrAFile)
{
    for (PDFErrorCode loss :
         {PDFErrorCode::EngineMissing, PDFErrorCode::EngineFailed, PDFErrorCode::DeadlineExceeded})
        EXPECT_TRUE(isEngineLoss(pdfError(loss)));
    for (PDFErrorCode other :
         {PDFErrorCode::NotAPDF, PDFErrorCode::PageUnavailable, PDFErrorCode::WrongPassword})
        EXPECT_FALSE(isEngineLoss(pdfError(other)));
    EXPECT_FALSE(isEngineLoss(cancelledError()));
}

#include "support/Gate.h"
#include "support/TestLibrary.h"

#include <tuple>

TEST(LibraryUrgency, IsThatOfTheServiceForEveryOperation)
{
    TestLibrary library;
    NativeLibraryService background(library.db, library.publisher, library.bookmarkEvents,
                                    Urgency::Background);
    Gate gate(library.db);
    library.statements.clear();
    const QString text = QStringLiteral("x");
    PaperEdit edit;
    edit.title = text;
    const auto operations = std::tuple{
        background.allPapers(),
        background.papersWithTag(text),
        background.papersByIds({text}),
        background.recentlyImportedPapers(text),
        background.paperCounts(text),
        background.paperById(text),
        background.paperByContentHash(text),
        background.contentHashOfPaper(text),
        background.paperByFilepath(text),
        background.paperIdsWithPrefix(text),
        background.updateFilepath(text, text),
        background.updatePaper(text, edit),
        background.allFilepaths(),
        background.deletePaper(text),
        background.addTag(text, text),
        background.removeTag(text, text),
        background.allTagNames(),
        background.createTag(text),
        background.bookmarksForPaper(text),
        background.createBookmark(Bookmark()),
        background.deleteBookmark(text),
    };
    QStringList ranBefore{QStringLiteral("not asked")};
    const auto person = library.db.perform(Urgency::PersonWaits, [&](Database &) {
        ranBefore = library.statements.all();
        return Result<void>();
    });
    gate.open();
    EXPECT_TRUE(person.result());
    EXPECT_EQ(ranBefore, QStringList());
    std::apply([](auto... operation) { (operation.waitForFinished(), ...); }, operations);
    EXPECT_FALSE(library.statements.all().isEmpty());
}

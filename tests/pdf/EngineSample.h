#pragma once

#include "pdf/EngineDocument.h"
#include "pdf/protocol/Writer.h"
#include "platform/InputFile.h"
#include "support/PdfBuilder.h"
#include "support/Printing.h"
#include "support/Programs.h"
#include "support/TemporaryFolder.h"

#include <cerrno>
#include <sys/wait.h>

using OpenResult = Result<std::unique_ptr<PDFDocument>>;

/// A PDF on disk and the means to open it.
class Sample
{
public:
    explicit Sample(const QByteArray &bytes)
        : m_file(InputFile::open(m_folder.write(QStringLiteral("sample.pdf"), bytes)))
    {
    }

    OpenResult open(const QString &program = pdfEngineProgram(), const EngineDeadlines &deadlines = {},
                    std::stop_token stop = {}) const
    {
        return engineOpener({program, deadlines})(*m_file, stop);
    }

    const InputFile &file() const { return *m_file; }

private:
    TemporaryFolder m_folder;
    Result<InputFile> m_file;
};

inline Sample oneWord()
{
    return Sample(PdfBuilder().title("A title").page({QStringLiteral("Word")}).build());
}

inline PDFErrorCode codeOf(const Error &error)
{
    EXPECT_EQ(error.domain, QStringLiteral("PDFDocument"));
    EXPECT_FALSE(error.description.isEmpty());
    return PDFErrorCode(error.code);
}

inline bool hasChildren()
{
    return waitpid(-1, nullptr, WNOHANG) >= 0 || errno != ECHILD;
}

/// The bytes of a message, or of its beginning, as numbers.
inline QByteArray numbers(std::initializer_list<std::uint32_t> values)
{
    Writer out;
    for (std::uint32_t value : values)
        out.number(value);
    const std::vector<std::uint8_t> bytes = out.take();
    return {reinterpret_cast<const char *>(bytes.data()), qsizetype(bytes.size())};
}

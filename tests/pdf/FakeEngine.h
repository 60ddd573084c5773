#pragma once

#include "pdf/protocol/Limits.h"
#include "pdf/protocol/Messages.h"
#include "support/TemporaryFolder.h"

#include <QByteArray>
#include <QFile>
#include <QString>
#include <vector>

/// A program that stands in for the engine: it answers what it was given without reading any request, and
/// then does as it was told.
class FakeEngine
{
public:
    /// Waits to be ended.
    static constexpr char kHang[] = "exec sleep 1000";

    /// `replies` are sent at once; then the shell runs `afterwards`.
    explicit FakeEngine(const std::vector<QByteArray> &replies, const QByteArray &afterwards = kHang)
    {
        m_folder.write(QStringLiteral("replies"),
                       QByteArray(QByteArrayList(replies.begin(), replies.end()).join()));
        m_program =
            m_folder.write(QStringLiteral("engine"), "#!/bin/sh\ncat '" + QFile::encodeName(m_folder.path()) +
                                                         "/replies' >&3\n" + afterwards + '\n');
        QFile::setPermissions(m_program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QString program() const { return m_program; }

    /// The bytes of one reply to the request with this number, counted from 1.
    static QByteArray reply(std::uint32_t request, const Reply &reply)
    {
        const std::vector<std::uint8_t> bytes = encoded(request, reply);
        return {reinterpret_cast<const char *>(bytes.data()), qsizetype(bytes.size())};
    }

    /// The reply that opens a document of `pageCount` pages, as the first one.
    static QByteArray opened(std::uint32_t pageCount = 1, std::uint32_t version = kProtocolVersion)
    {
        return reply(1, OpenedReply{version, pageCount, "Title", std::nullopt});
    }

private:
    TemporaryFolder m_folder;
    QString m_program;
};

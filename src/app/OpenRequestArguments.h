#pragma once

#include "reader/PDFOpenRequest.h"

#include <QByteArrayList>
#include <QList>

// Open requests on their way from one program to another: as JSON in arguments and in calls, which no shell
// sees. Only files are opened on behalf of another program.

QByteArray toBytes(const PDFOpenRequest &request);
/// Fails, in words, when `json` is no request for a file.
Result<PDFOpenRequest> openRequestFromBytes(const QByteArray &json);

/// What the desktop program is started with to open reader windows: an option and a request, in turns.
QByteArrayList toArguments(const QList<PDFOpenRequest> &requests);
/// The requests of such arguments, the program's name not among them. Fails when anything else is among them.
Result<QList<PDFOpenRequest>> openRequestsFromArguments(const QByteArrayList &arguments);

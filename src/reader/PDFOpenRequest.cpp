#include "reader/PDFOpenRequest.h"

size_t qHash(const PDFOpenRequest &request, size_t seed)
{
    return qHashMulti(seed, request.id, request.url, request.page.value_or(0),
                      request.paperId.value_or(QString()), request.searchText.value_or(QString()),
                      request.highlightText.value_or(QString()));
}

#pragma once

#include "engine/Guarded.h"
#include "engine/Handles.h"

#include <string_view>

/// The object that `find` answers, kept: MuPDF lends its objects, and a repair of the document on the way
/// drops what it had read. Nothing when `find` fails or finds nothing.
template <typename Find> ObjectHandle kept(fz_context *context, const Find &find)
{
    pdf_obj *object = nullptr;
    (void)guarded(context, [&] { object = pdf_keep_obj(context, find()); });
    return {object, {context}};
}

/// The bytes of the string that `find` answers, which MuPDF lends: to be copied before it is called again.
/// Nothing when `find` fails or finds no string.
template <typename Find> std::optional<std::string_view> stringBytes(fz_context *context, const Find &find)
{
    const char *bytes = nullptr;
    std::size_t count = 0;
    (void)guarded(context, [&] {
        pdf_obj *found = find();
        if (pdf_is_string(context, found)) {
            bytes = pdf_to_str_buf(context, found);
            count = pdf_to_str_len(context, found);
        }
    });
    return bytes ? std::optional(std::string_view(bytes, count)) : std::nullopt;
}

/// The dictionary in an entry of another one.
inline ObjectHandle keptDictionary(fz_context *context, pdf_obj *dictionary, pdf_obj *key)
{
    return kept(context, [&] {
        pdf_obj *entry = pdf_dict_get(context, dictionary, key);
        return pdf_is_dict(context, entry) ? entry : nullptr;
    });
}

/// Page `index` of the document. MuPDF lends the one that it finds in the page tree, but gives away the one
/// that it finds by its map of the pages while that is loaded.
inline ObjectHandle keptPage(fz_context *context, pdf_document *document, int index)
{
    const bool isGivenAway = document->fwd_page_map != nullptr;
    ObjectHandle page = kept(context, [&] { return pdf_lookup_page_obj(context, document, index); });
    if (isGivenAway)
        pdf_drop_obj(context, page.get());
    return page;
}

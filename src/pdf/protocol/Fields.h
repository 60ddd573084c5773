#pragma once

#include "pdf/protocol/Messages.h"
#include "pdf/protocol/Reader.h"
#include "pdf/protocol/Writer.h"

// The fields of every message, in their order. What is read is believed only if the `Reader` says so at the
// end; until then it is at least within the limits.

void write(Writer &out, const OpenRequest &message);
void write(Writer &out, const PageTextRequest &message);
void write(Writer &out, const ThumbnailRequest &message);
void write(Writer &out, const ShapesRequest &message);
void write(Writer &out, const PlacedTextRequest &message);
void write(Writer &out, const DrawRequest &message);
void write(Writer &out, const OutlineRequest &message);
void write(Writer &out, const LinksRequest &message);
void write(Writer &out, const PageLabelsRequest &message);

void read(Reader &in, OpenRequest &message);
void read(Reader &in, PageTextRequest &message);
void read(Reader &in, ThumbnailRequest &message);
void read(Reader &in, ShapesRequest &message);
void read(Reader &in, PlacedTextRequest &message);
void read(Reader &in, DrawRequest &message);
void read(Reader &in, OutlineRequest &message);
void read(Reader &in, LinksRequest &message);
void read(Reader &in, PageLabelsRequest &message);

void write(Writer &out, const OpenedReply &message);
void write(Writer &out, const TextReply &message);
void write(Writer &out, const PictureReply &message);
void write(Writer &out, const ShapesReply &message);
void write(Writer &out, const PlacedTextReply &message);
void write(Writer &out, const DrawnReply &message);
void write(Writer &out, const OutlineReply &message);
void write(Writer &out, const LinksReply &message);
void write(Writer &out, const PageLabelsReply &message);
void write(Writer &out, const FailedReply &message);

void read(Reader &in, OpenedReply &message);
void read(Reader &in, TextReply &message);
void read(Reader &in, PictureReply &message);
void read(Reader &in, ShapesReply &message);
void read(Reader &in, PlacedTextReply &message);
void read(Reader &in, DrawnReply &message);
void read(Reader &in, OutlineReply &message);
void read(Reader &in, LinksReply &message);
void read(Reader &in, PageLabelsReply &message);
void read(Reader &in, FailedReply &message);

// The container of Microsoft Help 2.x files.
#pragma once

#include <cstdint>

#include "host/compile/ByteSink.h"
#include "host/compile/StorageWriter.h"

namespace quillbook::compile {

/// How the compressed section of this container is transformed.
[[nodiscard]] StorageTransform ItolitlsTransform();

/// Writes a program file without code, and behind it header and directory of a finished storage. The caller then
/// writes the storage's content right behind.
///
/// No public document tells the payload of three of the container's five sections; they hold what is known of them
/// and readers skip them.
void WriteItolitlsFront(ByteSink& output, const StorageWriter& storage, std::uint32_t timeStamp,
                        std::uint32_t localeId);

}  // namespace quillbook::compile

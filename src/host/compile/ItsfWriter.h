// The container of HTML Help 1.x files.
#pragma once

#include <cstdint>

#include "host/compile/ByteSink.h"
#include "host/compile/StorageWriter.h"

namespace quillbook::compile {

/// How the compressed section of this container is transformed.
[[nodiscard]] StorageTransform ItsfTransform();

/// Writes header and directory of a finished storage. The caller then writes the storage's content right behind.
/// `timeStamp` and `localeId` go into the header as they stand.
void WriteItsfFront(ByteSink& output, const StorageWriter& storage, std::uint32_t timeStamp, std::uint32_t localeId);

}  // namespace quillbook::compile

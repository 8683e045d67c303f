#include "host/compile/WordRuns.h"

#include <algorithm>

#include "host/compile/Bytes.h"

namespace quillbook::compile {

void WordRuns::BeginRun() {
  if (!mFile) mFile = std::make_unique<SpoolFile>(mFolder);
  mRuns.emplace_back().next = mFile->Size();
}

void WordRuns::BeginWord(std::uint32_t word, std::uint32_t length) {
  PutDword(mPending, word);
  PutDword(mPending, length);
}

void WordRuns::Append(std::string_view bytes) {
  mPending.append(bytes);
  if (mPending.size() >= BufferSize) Flush();
}

void WordRuns::EndRun() {
  Flush();
  mRuns.back().end = mFile->Size();
}

void WordRuns::Flush() {
  mFile->Write(mPending);
  mPending.clear();
}

void WordRuns::Fill(Run& run, std::size_t count) const {
  if (run.buffer.size() - run.at >= count || run.next == run.end) return;
  run.buffer.erase(0, run.at);
  run.at = 0;
  const auto bytes =
      mFile->Read(run.next, static_cast<std::size_t>(std::min<std::uint64_t>(BufferSize, run.end - run.next)));
  run.buffer += bytes;
  run.next += bytes.size();
}

void WordRuns::Read(std::uint32_t word, const std::function<void(std::string_view)>& sink) {
  for (auto& run : mRuns) {
    Fill(run, PieceHeader);
    if (run.at == run.buffer.size() || GetDword(run.buffer, run.at) != word) continue;
    std::size_t left = GetDword(run.buffer, run.at + 4);
    run.at += PieceHeader;
    while (left > 0) {
      Fill(run, 1);
      const auto count = std::min(left, run.buffer.size() - run.at);
      sink(std::string_view(run.buffer).substr(run.at, count));
      run.at += count;
      left -= count;
    }
  }
}

}  // namespace quillbook::compile

#include "host/compile/StorageWriter.h"

#include <algorithm>

#include "host/compile/Bytes.h"
#include "host/compile/Names.h"
#include "quillbook/base/Text.h"

namespace quillbook::compile {

namespace {

constexpr std::string_view Stream = "::DataSpace/Storage/MSCompressed/";

/// "Uncompressed" and "MSCompressed", counted and ended as the format has it.
std::string NameList() {
  std::string names;
  for (const std::string_view name : {"Uncompressed", "MSCompressed"}) {
    PutWord(names, name.size());
    names += ToUtf16Bytes(name);
    PutWord(names, 0);
  }
  std::string list;
  PutWord(list, (names.size() + 4) / 2);
  PutWord(list, 2);
  return list + names;
}

std::string ControlData() {
  std::string data;
  PutDword(data, 6);
  data += "LZXC";
  PutDword(data, 2);                                                 // version
  PutDword(data, LzxEncoder::IntervalSize / LzxEncoder::FrameSize);  // reset interval
  PutDword(data, 2);                                                 // window of 64 KiB
  PutDword(data, 1);                                                 // cache
  PutDword(data, 0);
  return data;
}

}  // namespace

void StorageWriter::BeginCompressed(std::string_view name) {
  mEntries.push_back({std::string(name), 1, mUncompressed, 0});
}

void StorageWriter::Append(std::string_view bytes) {
  mEntries.back().length += bytes.size();
  mUncompressed += bytes.size();
  while (!bytes.empty()) {
    const auto taken = std::min(bytes.size(), LzxEncoder::IntervalSize - mPending.size());
    mPending.append(bytes.substr(0, taken));
    bytes.remove_prefix(taken);
    if (mPending.size() == LzxEncoder::IntervalSize) EncodePending();
  }
}

void StorageWriter::AddStored(std::string_view name, std::string bytes) {
  mStored.emplace_back(std::string(name), std::move(bytes));
}

void StorageWriter::EncodePending() {
  mEncoded.clear();
  mFrameStarts.clear();
  mEncoder.EncodeInterval(mPending, mEncoded, mFrameStarts);
  for (const auto start : mFrameStarts) mFrameOffsets.push_back(mCompressed + start);
  mCompressed += mEncoded.size();
  WriteContent(mEncoded);
  mPending.clear();
}

void StorageWriter::FinishCompressed() {
  // Readers disagree on the number of frames of a stream that ends exactly with one, so it never does.
  if (mUncompressed % LzxEncoder::FrameSize == 0) {
    mPending += '\0';
    ++mUncompressed;
  }
  const auto frames = (mPending.size() + LzxEncoder::FrameSize - 1) / LzxEncoder::FrameSize;
  mPending.resize(frames * LzxEncoder::FrameSize);
  EncodePending();
}

std::string StorageWriter::ResetTable() const {
  std::string table;
  PutDword(table, 2);
  PutDword(table, mFrameOffsets.size());
  PutDword(table, 8);
  PutDword(table, 0x28);
  PutQword(table, mUncompressed);
  PutQword(table, mCompressed);
  PutQword(table, LzxEncoder::FrameSize);
  for (const auto offset : mFrameOffsets) PutQword(table, offset);
  return table;
}

void StorageWriter::AddControlStreams(const StorageTransform& transform) {
  const std::string stream(Stream);
  std::string span;
  PutQword(span, mUncompressed);
  AddStored("::DataSpace/NameList", NameList());
  AddStored(stream + "ControlData", ControlData());
  AddStored(stream + "SpanInfo", std::move(span));
  AddStored(stream + "Transform/List", transform.list);
  AddStored(stream + "Transform/{" + std::string(transform.guid) + "}/InstanceData/ResetTable", ResetTable());
  mEntries.push_back({stream + "Content", 0, 0, mCompressed});
}

void StorageWriter::Finish(const StorageTransform& transform) {
  FinishCompressed();
  AddControlStreams(transform);
  for (const auto& [name, bytes] : mStored) {
    mEntries.push_back({name, 0, mContentSize, bytes.size()});
    WriteContent(bytes);
  }
  mStored.clear();
  std::sort(mEntries.begin(), mEntries.end(),
            [](const StorageEntry& left, const StorageEntry& right) { return NameLess(left.name, right.name); });
}

void StorageWriter::WriteContent(std::string_view bytes) {
  mContent.Write(bytes);
  mContentSize += bytes.size();
}

}  // namespace quillbook::compile

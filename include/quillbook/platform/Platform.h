// The one place through which a thread reaches the operating system.
#pragma once

#include <memory>
#include <utility>

#include "quillbook/platform/Desktop.h"
#include "quillbook/platform/FileStore.h"
#include "quillbook/platform/MessageBox.h"
#include "quillbook/platform/RegistryStore.h"

namespace quillbook {

/// The services of the calling thread. Each is made on first use; each can be replaced, for tests or by a program
/// that has its own windows.
class Platform {
 public:
  [[nodiscard]] static Platform& Current();

  [[nodiscard]] MessageBox& Messages();
  [[nodiscard]] FileStore& Files();
  [[nodiscard]] RegistryStore& Registry();
  [[nodiscard]] Desktop& Session();

  /// Puts `service` in place and gives what was there; nothing stands for the one made on first use.
  std::shared_ptr<MessageBox> Replace(std::shared_ptr<MessageBox> service);
  std::shared_ptr<FileStore> Replace(std::shared_ptr<FileStore> service);
  std::shared_ptr<RegistryStore> Replace(std::shared_ptr<RegistryStore> service);
  std::shared_ptr<Desktop> Replace(std::shared_ptr<Desktop> service);

 private:
  std::shared_ptr<MessageBox> mMessages;
  std::shared_ptr<FileStore> mFiles;
  std::shared_ptr<RegistryStore> mRegistry;
  std::shared_ptr<Desktop> mSession;
};

/// Replaces one service of this thread for as long as it lives:
///
///     const PlatformOverride<RegistryStore> registry(std::make_shared<MemoryRegistryStore>());
template <class Service>
class [[nodiscard]] PlatformOverride {
 public:
  explicit PlatformOverride(std::shared_ptr<Service> service)
      : mPrevious(Platform::Current().Replace(std::move(service))) {}
  PlatformOverride(const PlatformOverride&) = delete;
  PlatformOverride& operator=(const PlatformOverride&) = delete;
  ~PlatformOverride() { Platform::Current().Replace(std::move(mPrevious)); }

 private:
  std::shared_ptr<Service> mPrevious;
};

}  // namespace quillbook

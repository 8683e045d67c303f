#include "quillbook/platform/Platform.h"

#include "quillbook/platform/ConsoleMessageBox.h"
#include "quillbook/platform/FileRegistryStore.h"
#include "quillbook/platform/InstalledRegistryStore.h"
#include "quillbook/platform/LinuxDesktop.h"
#include "quillbook/platform/LinuxFileStore.h"

namespace quillbook {

Platform& Platform::Current() {
  thread_local Platform platform;
  return platform;
}

MessageBox& Platform::Messages() {
  if (!mMessages) mMessages = std::make_shared<ConsoleMessageBox>();
  return *mMessages;
}

FileStore& Platform::Files() {
  if (!mFiles) mFiles = std::make_shared<LinuxFileStore>();
  return *mFiles;
}

RegistryStore& Platform::Registry() {
  if (!mRegistry)
    mRegistry = std::make_shared<InstalledRegistryStore>(
        std::make_shared<FileRegistryStore>(FileRegistryStore::DefaultUserFile(),
                                            FileRegistryStore::DefaultMachineFile()),
        InstalledRegistryStore::InstallationFolder());
  return *mRegistry;
}

Desktop& Platform::Session() {
  if (!mSession) mSession = std::make_shared<LinuxDesktop>();
  return *mSession;
}

std::shared_ptr<MessageBox> Platform::Replace(std::shared_ptr<MessageBox> service) {
  return std::exchange(mMessages, std::move(service));
}

std::shared_ptr<FileStore> Platform::Replace(std::shared_ptr<FileStore> service) {
  return std::exchange(mFiles, std::move(service));
}

std::shared_ptr<RegistryStore> Platform::Replace(std::shared_ptr<RegistryStore> service) {
  return std::exchange(mRegistry, std::move(service));
}

std::shared_ptr<Desktop> Platform::Replace(std::shared_ptr<Desktop> service) {
  return std::exchange(mSession, std::move(service));
}

}  // namespace quillbook

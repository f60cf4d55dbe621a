#include "backends/qt/views/QtExtension.h"

#include <dlfcn.h>
#include <link.h>

#include <algorithm>
#include <array>
#include <utility>

#include "platform/Foundation/NSLog.h"

namespace tarni::qt {
namespace {

#define TARNI_QT_MAJOR QT_STRINGIFY(QT_VERSION_MAJOR)

struct KnownLibrary {
  const char* ofToolkit;  // that the process must have mapped
  const char* extension;
};

constexpr std::array kKnown{
    KnownLibrary{"libQt" TARNI_QT_MAJOR "Quick.so." TARNI_QT_MAJOR,
                 "libtarni-qt" TARNI_QT_MAJOR "-quick.so"},
    KnownLibrary{"libQt" TARNI_QT_MAJOR "WebEngineWidgets.so." TARNI_QT_MAJOR,
                 "libtarni-qt" TARNI_QT_MAJOR "-webengine.so"},
};

// How many libraries the process has mapped so far.
unsigned long long countMapped() {
  unsigned long long count = 0;
  dl_iterate_phdr(
      [](dl_phdr_info* info, std::size_t, void* told) {
        *static_cast<unsigned long long*>(told) = info->dlpi_adds;
        return 1;
      },
      &count);
  return count;
}

bool isMapped(const char* library) {
  void* const mapped = dlopen(library, RTLD_NOLOAD | RTLD_LAZY);
  if (mapped) dlclose(mapped);
  return mapped != nullptr;
}

}  // namespace

void QtExtensions::add(std::unique_ptr<QtExtension> extension) {
  extensions_.push_back(std::move(extension));
}

platform::UIWindowRef QtExtensions::viewOfWindow(QWindow& window) {
  // Asked for each point that is converted: whether a library was mapped meanwhile takes longer.
  if (platform::UIWindowRef view = askForWindow(window)) return view;
  const std::size_t asked = extensions_.size();
  loadMapped();
  return extensions_.size() == asked ? nullptr : askForWindow(window);
}

platform::UIWindowRef QtExtensions::askForWindow(QWindow& window) const {
  for (const auto& extension : extensions_) {
    if (platform::UIWindowRef view = extension->viewOfWindow(window)) return view;
  }
  return nullptr;
}

platform::UIViewRef QtExtensions::viewOfObject(QObject& object) const {
  for (const auto& extension : extensions_) {
    if (platform::UIViewRef view = extension->viewOfObject(object)) return view;
  }
  return nullptr;
}

std::shared_ptr<QtView> QtExtensions::makeView(QWidget& widget) {
  loadMapped();
  for (const auto& extension : extensions_) {
    if (std::shared_ptr<QtView> view = extension->makeView(widget)) return view;
  }
  return nullptr;
}

platform::NSURLLoader* QtExtensions::urlLoader() {
  for (const auto& extension : extensions_) {
    if (platform::NSURLLoader* const loader = extension->urlLoader()) return loader;
  }
  return nullptr;
}

// A window or a widget of a library shows up after that library was mapped, so it is early enough
// to look then.
void QtExtensions::loadMapped() {
  if (folder_.empty() || tried_.size() == kKnown.size()) return;
  // Asked for each new view, and a library that is not mapped is looked for in the file system.
  const unsigned long long mapped = countMapped();
  if (mapped == std::exchange(mappedAtLastLook_, mapped)) return;
  for (std::size_t i = 0; i < kKnown.size(); ++i) {
    if (std::ranges::find(tried_, i) != tried_.end() || !isMapped(kKnown[i].ofToolkit)) continue;
    tried_.push_back(i);
    load(folder_ + "/" + kKnown[i].extension);
  }
}

void QtExtensions::load(const std::string& path) {
  void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  const auto make =
      library ? reinterpret_cast<MakeExtension>(dlsym(library, kMakeExtension)) : nullptr;
  if (make) {
    add(std::unique_ptr<QtExtension>(make()));
  } else {
    platform::NSLog("Not loaded: %s", dlerror());
  }
}

QtExtensions& extensions() {
  static auto* const shared = new QtExtensions;
  return *shared;
}

}  // namespace tarni::qt

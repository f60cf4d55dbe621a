#include "platform/UIKit/Classes.h"

namespace tarni::platform::uikit {

namespace known {
#define TARNI_DEFINE(name, superclass) constinit const ClassInfo name{#name, superclass};
TARNI_UIKIT_CLASSES(TARNI_DEFINE)
#undef TARNI_DEFINE
}  // namespace known

namespace {

#define TARNI_LIST(name, superclass) name,
constexpr Class kKnown[] = {TARNI_UIKIT_CLASSES(TARNI_LIST)};
#undef TARNI_LIST

}  // namespace

constinit const std::span<const Class> kAll = kKnown;

}  // namespace tarni::platform::uikit

#include "backends/ios/controls/ScrollView.h"

#include "backends/ios/controls/Named.h"
#include "backends/ios/views/Kinds.h"

namespace tarni::ios {

std::shared_ptr<View> makeScrollView(::UIView* view) { return makeNamed<ScrollView>(view); }

}  // namespace tarni::ios

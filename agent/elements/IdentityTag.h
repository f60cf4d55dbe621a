// The keys under which a view's layer carries its identity. A tag is written once and lives as long
// as the layer; a view may carry both.
#pragma once

#include <string>
#include <string_view>

#include "platform/UIKit/UIView.h"

namespace tarni {

// Given by the walk that goes along with recording.
inline constexpr std::string_view kRecordingTag = "TarniUIVIewGuid";
// Given by the walks of playback.
inline constexpr std::string_view kPlaybackTag = "TarniUIVIewGuid_PlayBack";

// The recording tag, else the playback tag, else null. Main thread; valid while the layer lives.
inline const std::string* identityTag(const platform::UIViewRef& view) {
  if (!view) return nullptr;
  const platform::CALayer& layer = view->layer();
  const std::string* const tag = layer.valueForKey(kRecordingTag);
  return tag ? tag : layer.valueForKey(kPlaybackTag);
}

}  // namespace tarni

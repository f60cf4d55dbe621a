// The keys under which a view's layer carries its identity. A tag is written once and lives as long
// as the layer; a view may carry both.
#pragma once

#include "platform/QuartzCore/CALayer.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

// Given by the walk that goes along with recording.
inline constexpr platform::TagKey kRecordingTag{0, "TarniUIVIewGuid"};
// Given by the walks of playback.
inline constexpr platform::TagKey kPlaybackTag{1, "TarniUIVIewGuid_PlayBack"};

// The recording tag, else the playback tag, else none. Main thread.
inline platform::Guid identityTag(const platform::UIViewRef& view) {
  if (!view) return {};
  const platform::CALayer& layer = view->layer();
  const platform::Guid tag = layer.tag(kRecordingTag);
  return tag ? tag : layer.tag(kPlaybackTag);
}

}  // namespace tarni

// UIView(KIFAdditions): the gestures on a view, and the questions about it.
#pragma once

#include "agent/elements/UIView_KIFAdditions_Visibility.h"
#include "agent/interaction/UIView_KIFAdditions_Gestures.h"
#include "agent/interaction/UIView_KIFAdditions_Tappability.h"

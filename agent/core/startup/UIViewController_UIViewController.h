// UIViewController(UIViewController): keeps the shared state "viewControllerLoaded" up to date.
// Main thread; nothing thrown leaves the hooks.
#pragma once

#include <vector>

#include "platform/ObjectiveC/Class.h"
#include "platform/ObjectiveC/Runtime.h"

namespace tarni::UIViewController {

// The load hook: exchanges "viewDidAppear:" and "viewWillAppear:" with the hooks below when
// `receiver` is exactly UIViewController.
void load(platform::Class receiver);

// Each calls the system's method first; `arguments` hold the animated flag.
void csViewDidAppear(const std::vector<platform::Argument>& arguments) noexcept;
void csViewWillAppear(const std::vector<platform::Argument>& arguments) noexcept;

}  // namespace tarni::UIViewController

// The UIKit classes that the agent tests for, with their superclasses. A backend gives its views
// one of these or a class that it defines below one of them. Any thread.
#pragma once

#include <span>

#include "platform/ObjectiveC/Class.h"

// The one list of them: each with its superclass.
#define TARNI_UIKIT_CLASSES(CLASS)                       \
  CLASS(NSObject, nullptr)                               \
  CLASS(UIResponder, &NSObject)                          \
  CLASS(UIApplication, &UIResponder)                     \
  CLASS(UIViewController, &UIResponder)                  \
  CLASS(UIView, &UIResponder)                            \
  CLASS(UIWindow, &UIView)                               \
  CLASS(UILabel, &UIView)                                \
  CLASS(UIImageView, &UIView)                            \
  CLASS(UIControl, &UIView)                              \
  CLASS(UIButton, &UIControl)                            \
  CLASS(UITextField, &UIControl)                         \
  CLASS(UISwitch, &UIControl)                            \
  CLASS(UISlider, &UIControl)                            \
  CLASS(UISegmentedControl, &UIControl)                  \
  CLASS(UIScrollView, &UIView)                           \
  CLASS(UITextView, &UIScrollView)                       \
  CLASS(UITableView, &UIScrollView)                      \
  CLASS(UICollectionView, &UIScrollView)                 \
  CLASS(UITableViewCell, &UIView)                        \
  CLASS(UICollectionReusableView, &UIView)               \
  CLASS(UICollectionViewCell, &UICollectionReusableView) \
  CLASS(UIPickerView, &UIView)                           \
  CLASS(UIProgressView, &UIView)                         \
  CLASS(UINavigationBar, &UIView)                        \
  CLASS(UIToolbar, &UIView)                              \
  CLASS(UITabBar, &UIView)                               \
  CLASS(UIAlertView, &UIView)                            \
  CLASS(UIWebView, &UIView)                              \
  CLASS(WKWebView, &UIView)                              \
  CLASS(UIImage, &NSObject)                              \
  CLASS(UINavigationItem, &NSObject)                     \
  CLASS(UIBarItem, &NSObject)                            \
  CLASS(UIBarButtonItem, &UIBarItem)                     \
  CLASS(UITabBarItem, &UIBarItem)                        \
  CLASS(UIGestureRecognizer, &NSObject)                  \
  CLASS(UITapGestureRecognizer, &UIGestureRecognizer)

namespace tarni::platform::uikit {

// The classes themselves stand from the start: load hooks of a class-loading runtime run before any
// initialiser of the library. There is one of each in the process, in whichever library it is asked
// for.
namespace known {
#define TARNI_DECLARE(name, superclass) extern const ClassInfo name;
TARNI_UIKIT_CLASSES(TARNI_DECLARE)
#undef TARNI_DECLARE
}  // namespace known

#define TARNI_NAME(name, superclass) inline constexpr Class name = &known::name;
TARNI_UIKIT_CLASSES(TARNI_NAME)
#undef TARNI_NAME

// All of the above.
extern const std::span<const Class> kAll;

}  // namespace tarni::platform::uikit

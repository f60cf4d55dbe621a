// The UIKit classes that the agent tests for, with their superclasses. A backend gives its views
// one of these or a class that it defines below one of them. Any thread.
#pragma once

#include "platform/ObjectiveC/Class.h"

namespace tarni::platform::uikit {

inline const Class NSObject = defineClass("NSObject", nullptr);
inline const Class UIResponder = defineClass("UIResponder", NSObject);
inline const Class UIApplication = defineClass("UIApplication", UIResponder);
inline const Class UIViewController = defineClass("UIViewController", UIResponder);
inline const Class UIView = defineClass("UIView", UIResponder);
inline const Class UIWindow = defineClass("UIWindow", UIView);
inline const Class UILabel = defineClass("UILabel", UIView);
inline const Class UIImageView = defineClass("UIImageView", UIView);
inline const Class UIControl = defineClass("UIControl", UIView);
inline const Class UIButton = defineClass("UIButton", UIControl);
inline const Class UITextField = defineClass("UITextField", UIControl);
inline const Class UISwitch = defineClass("UISwitch", UIControl);
inline const Class UISlider = defineClass("UISlider", UIControl);
inline const Class UISegmentedControl = defineClass("UISegmentedControl", UIControl);
inline const Class UIScrollView = defineClass("UIScrollView", UIView);
inline const Class UITextView = defineClass("UITextView", UIScrollView);
inline const Class UITableView = defineClass("UITableView", UIScrollView);
inline const Class UICollectionView = defineClass("UICollectionView", UIScrollView);
inline const Class UITableViewCell = defineClass("UITableViewCell", UIView);
inline const Class UICollectionReusableView = defineClass("UICollectionReusableView", UIView);
inline const Class UICollectionViewCell =
    defineClass("UICollectionViewCell", UICollectionReusableView);
inline const Class UIPickerView = defineClass("UIPickerView", UIView);
inline const Class UIProgressView = defineClass("UIProgressView", UIView);
inline const Class UINavigationBar = defineClass("UINavigationBar", UIView);
inline const Class UIToolbar = defineClass("UIToolbar", UIView);
inline const Class UITabBar = defineClass("UITabBar", UIView);
inline const Class UIAlertView = defineClass("UIAlertView", UIView);
inline const Class UIWebView = defineClass("UIWebView", UIView);
inline const Class UIImage = defineClass("UIImage", NSObject);
inline const Class UINavigationItem = defineClass("UINavigationItem", NSObject);
inline const Class UIBarItem = defineClass("UIBarItem", NSObject);
inline const Class UIBarButtonItem = defineClass("UIBarButtonItem", UIBarItem);
inline const Class UITabBarItem = defineClass("UITabBarItem", UIBarItem);
inline const Class UIGestureRecognizer = defineClass("UIGestureRecognizer", NSObject);
inline const Class UITapGestureRecognizer =
    defineClass("UITapGestureRecognizer", UIGestureRecognizer);

}  // namespace tarni::platform::uikit

// The UIKit classes that the agent tests for, with their superclasses. A backend gives its views
// one of these or a class that it defines below one of them. Any thread.
#pragma once

#include "platform/ObjectiveC/Class.h"

namespace tarni::platform::uikit {

// A class that stands from the start: load hooks of a class-loading runtime run before any
// initialiser of the library.
template <ClassName name, Class superclass = nullptr>
inline constinit const ClassInfo knownClass{name.text, superclass};

inline constexpr Class NSObject = &knownClass<"NSObject">;
inline constexpr Class UIResponder = &knownClass<"UIResponder", NSObject>;
inline constexpr Class UIApplication = &knownClass<"UIApplication", UIResponder>;
inline constexpr Class UIViewController = &knownClass<"UIViewController", UIResponder>;
inline constexpr Class UIView = &knownClass<"UIView", UIResponder>;
inline constexpr Class UIWindow = &knownClass<"UIWindow", UIView>;
inline constexpr Class UILabel = &knownClass<"UILabel", UIView>;
inline constexpr Class UIImageView = &knownClass<"UIImageView", UIView>;
inline constexpr Class UIControl = &knownClass<"UIControl", UIView>;
inline constexpr Class UIButton = &knownClass<"UIButton", UIControl>;
inline constexpr Class UITextField = &knownClass<"UITextField", UIControl>;
inline constexpr Class UISwitch = &knownClass<"UISwitch", UIControl>;
inline constexpr Class UISlider = &knownClass<"UISlider", UIControl>;
inline constexpr Class UISegmentedControl = &knownClass<"UISegmentedControl", UIControl>;
inline constexpr Class UIScrollView = &knownClass<"UIScrollView", UIView>;
inline constexpr Class UITextView = &knownClass<"UITextView", UIScrollView>;
inline constexpr Class UITableView = &knownClass<"UITableView", UIScrollView>;
inline constexpr Class UICollectionView = &knownClass<"UICollectionView", UIScrollView>;
inline constexpr Class UITableViewCell = &knownClass<"UITableViewCell", UIView>;
inline constexpr Class UICollectionReusableView = &knownClass<"UICollectionReusableView", UIView>;
inline constexpr Class UICollectionViewCell =
    &knownClass<"UICollectionViewCell", UICollectionReusableView>;
inline constexpr Class UIPickerView = &knownClass<"UIPickerView", UIView>;
inline constexpr Class UIProgressView = &knownClass<"UIProgressView", UIView>;
inline constexpr Class UINavigationBar = &knownClass<"UINavigationBar", UIView>;
inline constexpr Class UIToolbar = &knownClass<"UIToolbar", UIView>;
inline constexpr Class UITabBar = &knownClass<"UITabBar", UIView>;
inline constexpr Class UIAlertView = &knownClass<"UIAlertView", UIView>;
inline constexpr Class UIWebView = &knownClass<"UIWebView", UIView>;
inline constexpr Class UIImage = &knownClass<"UIImage", NSObject>;
inline constexpr Class UINavigationItem = &knownClass<"UINavigationItem", NSObject>;
inline constexpr Class UIBarItem = &knownClass<"UIBarItem", NSObject>;
inline constexpr Class UIBarButtonItem = &knownClass<"UIBarButtonItem", UIBarItem>;
inline constexpr Class UITabBarItem = &knownClass<"UITabBarItem", UIBarItem>;
inline constexpr Class UIGestureRecognizer = &knownClass<"UIGestureRecognizer", NSObject>;
inline constexpr Class UITapGestureRecognizer =
    &knownClass<"UITapGestureRecognizer", UIGestureRecognizer>;

inline constexpr Class all[] = {NSObject,
                                UIResponder,
                                UIApplication,
                                UIViewController,
                                UIView,
                                UIWindow,
                                UILabel,
                                UIImageView,
                                UIControl,
                                UIButton,
                                UITextField,
                                UISwitch,
                                UISlider,
                                UISegmentedControl,
                                UIScrollView,
                                UITextView,
                                UITableView,
                                UICollectionView,
                                UITableViewCell,
                                UICollectionReusableView,
                                UICollectionViewCell,
                                UIPickerView,
                                UIProgressView,
                                UINavigationBar,
                                UIToolbar,
                                UITabBar,
                                UIAlertView,
                                UIWebView,
                                UIImage,
                                UINavigationItem,
                                UIBarItem,
                                UIBarButtonItem,
                                UITabBarItem,
                                UIGestureRecognizer,
                                UITapGestureRecognizer};

}  // namespace tarni::platform::uikit

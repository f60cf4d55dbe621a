// The UIKit classes that the agent tests for, with their superclasses. A backend gives its views
// one of these or a class that it defines below one of them. Any thread.
#pragma once

#include <span>

#include "platform/ObjectiveC/Class.h"

namespace tarni::platform::uikit {

// The classes themselves stand from the start: load hooks of a class-loading runtime run before any
// initialiser of the library. There is one of each in the process, in whichever library it is asked
// for.
namespace known {
extern const ClassInfo NSObject;
extern const ClassInfo UIResponder;
extern const ClassInfo UIApplication;
extern const ClassInfo UIViewController;
extern const ClassInfo UIView;
extern const ClassInfo UIWindow;
extern const ClassInfo UILabel;
extern const ClassInfo UIImageView;
extern const ClassInfo UIControl;
extern const ClassInfo UIButton;
extern const ClassInfo UITextField;
extern const ClassInfo UISwitch;
extern const ClassInfo UISlider;
extern const ClassInfo UISegmentedControl;
extern const ClassInfo UIScrollView;
extern const ClassInfo UITextView;
extern const ClassInfo UITableView;
extern const ClassInfo UICollectionView;
extern const ClassInfo UITableViewCell;
extern const ClassInfo UICollectionReusableView;
extern const ClassInfo UICollectionViewCell;
extern const ClassInfo UIPickerView;
extern const ClassInfo UIProgressView;
extern const ClassInfo UINavigationBar;
extern const ClassInfo UIToolbar;
extern const ClassInfo UITabBar;
extern const ClassInfo UIAlertView;
extern const ClassInfo UIWebView;
extern const ClassInfo UIImage;
extern const ClassInfo UINavigationItem;
extern const ClassInfo UIBarItem;
extern const ClassInfo UIBarButtonItem;
extern const ClassInfo UITabBarItem;
extern const ClassInfo UIGestureRecognizer;
extern const ClassInfo UITapGestureRecognizer;
}  // namespace known

inline constexpr Class NSObject = &known::NSObject;
inline constexpr Class UIResponder = &known::UIResponder;
inline constexpr Class UIApplication = &known::UIApplication;
inline constexpr Class UIViewController = &known::UIViewController;
inline constexpr Class UIView = &known::UIView;
inline constexpr Class UIWindow = &known::UIWindow;
inline constexpr Class UILabel = &known::UILabel;
inline constexpr Class UIImageView = &known::UIImageView;
inline constexpr Class UIControl = &known::UIControl;
inline constexpr Class UIButton = &known::UIButton;
inline constexpr Class UITextField = &known::UITextField;
inline constexpr Class UISwitch = &known::UISwitch;
inline constexpr Class UISlider = &known::UISlider;
inline constexpr Class UISegmentedControl = &known::UISegmentedControl;
inline constexpr Class UIScrollView = &known::UIScrollView;
inline constexpr Class UITextView = &known::UITextView;
inline constexpr Class UITableView = &known::UITableView;
inline constexpr Class UICollectionView = &known::UICollectionView;
inline constexpr Class UITableViewCell = &known::UITableViewCell;
inline constexpr Class UICollectionReusableView = &known::UICollectionReusableView;
inline constexpr Class UICollectionViewCell = &known::UICollectionViewCell;
inline constexpr Class UIPickerView = &known::UIPickerView;
inline constexpr Class UIProgressView = &known::UIProgressView;
inline constexpr Class UINavigationBar = &known::UINavigationBar;
inline constexpr Class UIToolbar = &known::UIToolbar;
inline constexpr Class UITabBar = &known::UITabBar;
inline constexpr Class UIAlertView = &known::UIAlertView;
inline constexpr Class UIWebView = &known::UIWebView;
inline constexpr Class UIImage = &known::UIImage;
inline constexpr Class UINavigationItem = &known::UINavigationItem;
inline constexpr Class UIBarItem = &known::UIBarItem;
inline constexpr Class UIBarButtonItem = &known::UIBarButtonItem;
inline constexpr Class UITabBarItem = &known::UITabBarItem;
inline constexpr Class UIGestureRecognizer = &known::UIGestureRecognizer;
inline constexpr Class UITapGestureRecognizer = &known::UITapGestureRecognizer;

// All of the above.
extern const std::span<const Class> all;

}  // namespace tarni::platform::uikit

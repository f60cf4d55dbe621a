#include "platform/UIKit/Classes.h"

namespace tarni::platform::uikit {

namespace known {
constinit const ClassInfo NSObject{"NSObject", nullptr};
constinit const ClassInfo UIResponder{"UIResponder", uikit::NSObject};
constinit const ClassInfo UIApplication{"UIApplication", uikit::UIResponder};
constinit const ClassInfo UIViewController{"UIViewController", uikit::UIResponder};
constinit const ClassInfo UIView{"UIView", uikit::UIResponder};
constinit const ClassInfo UIWindow{"UIWindow", uikit::UIView};
constinit const ClassInfo UILabel{"UILabel", uikit::UIView};
constinit const ClassInfo UIImageView{"UIImageView", uikit::UIView};
constinit const ClassInfo UIControl{"UIControl", uikit::UIView};
constinit const ClassInfo UIButton{"UIButton", uikit::UIControl};
constinit const ClassInfo UITextField{"UITextField", uikit::UIControl};
constinit const ClassInfo UISwitch{"UISwitch", uikit::UIControl};
constinit const ClassInfo UISlider{"UISlider", uikit::UIControl};
constinit const ClassInfo UISegmentedControl{"UISegmentedControl", uikit::UIControl};
constinit const ClassInfo UIScrollView{"UIScrollView", uikit::UIView};
constinit const ClassInfo UITextView{"UITextView", uikit::UIScrollView};
constinit const ClassInfo UITableView{"UITableView", uikit::UIScrollView};
constinit const ClassInfo UICollectionView{"UICollectionView", uikit::UIScrollView};
constinit const ClassInfo UITableViewCell{"UITableViewCell", uikit::UIView};
constinit const ClassInfo UICollectionReusableView{"UICollectionReusableView", uikit::UIView};
constinit const ClassInfo UICollectionViewCell{"UICollectionViewCell",
                                               uikit::UICollectionReusableView};
constinit const ClassInfo UIPickerView{"UIPickerView", uikit::UIView};
constinit const ClassInfo UIProgressView{"UIProgressView", uikit::UIView};
constinit const ClassInfo UINavigationBar{"UINavigationBar", uikit::UIView};
constinit const ClassInfo UIToolbar{"UIToolbar", uikit::UIView};
constinit const ClassInfo UITabBar{"UITabBar", uikit::UIView};
constinit const ClassInfo UIAlertView{"UIAlertView", uikit::UIView};
constinit const ClassInfo UIWebView{"UIWebView", uikit::UIView};
constinit const ClassInfo UIImage{"UIImage", uikit::NSObject};
constinit const ClassInfo UINavigationItem{"UINavigationItem", uikit::NSObject};
constinit const ClassInfo UIBarItem{"UIBarItem", uikit::NSObject};
constinit const ClassInfo UIBarButtonItem{"UIBarButtonItem", uikit::UIBarItem};
constinit const ClassInfo UITabBarItem{"UITabBarItem", uikit::UIBarItem};
constinit const ClassInfo UIGestureRecognizer{"UIGestureRecognizer", uikit::NSObject};
constinit const ClassInfo UITapGestureRecognizer{"UITapGestureRecognizer",
                                                 uikit::UIGestureRecognizer};
}  // namespace known

namespace {

constexpr Class kKnown[] = {NSObject,
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

}  // namespace

constinit const std::span<const Class> all = kKnown;

}  // namespace tarni::platform::uikit

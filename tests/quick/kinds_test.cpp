// Which class an item appears as.
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <ostream>

#include "tests/quick/QuickScreen.h"

namespace tarni::test {
namespace {

struct Example {
  const char* name;
  const char* qml;
  const char* className;
  const char* kind;
};

void PrintTo(const Example& example, std::ostream* output) {
  *output << example.name;
}

class Kinds : public QuickScreen, public testing::WithParamInterface<Example> {};

TEST_P(Kinds, AreTold) {
  const std::string qml = GetParam().qml;
  const std::size_t end = qml.find('{') + 1;
  show(qml.substr(0, end) + " objectName: \"it\"; " + qml.substr(end));
  EXPECT_STREQ(view("it")->getClass()->name().c_str(), GetParam().className);
  EXPECT_TRUE(view("it")->isKindOfClass(platform::NSClassFromString(GetParam().kind)));
}

INSTANTIATE_TEST_SUITE_P(
    Of, Kinds,
    testing::Values(Example{"Item", "Item {}", "UIView", "UIView"},
                    Example{"Rectangle", "Rectangle { property int more: 1 }", "UIView", "UIView"},
                    Example{"Text", "Text {}", "UILabel", "UILabel"},
                    Example{"Label", "Label {}", "UILabel", "UILabel"},
                    Example{"Image", "Image {}", "UIImageView", "UIImageView"},
                    Example{"Button", "Button {}", "UIButton", "UIControl"},
                    Example{"ExtendedButton", "Button { signal more }", "UIButton", "UIButton"},
                    Example{"RadioButton", "RadioButton {}", "UIButton", "UIButton"},
                    Example{"Switch", "Switch {}", "UISwitch", "UISwitch"},
                    Example{"CheckBox", "CheckBox {}", "UISwitch", "UISwitch"},
                    Example{"TextInput", "TextInput {}", "UITextField", "UITextField"},
                    Example{"TextField", "TextField {}", "UITextField", "UIControl"},
                    Example{"TextArea", "TextArea {}", "UITextView", "UIScrollView"},
                    Example{"Flickable", "Flickable {}", "UIScrollView", "UIScrollView"},
                    Example{"ListView", "ListView {}", "UITableView", "UIScrollView"},
                    Example{"TableView", "TableView {}", "UITableView", "UITableView"},
                    Example{"GridView", "GridView {}", "UICollectionView", "UIScrollView"},
                    Example{"ListOfItems", "ListView { model: ObjectModel { Item {} } }",
                            "UIScrollView", "UIScrollView"},
                    Example{"ComboBox", "ComboBox {}", "UIPickerView", "UIPickerView"},
                    Example{"ToolBar", "ToolBar {}", "UINavigationBar", "UINavigationBar"},
                    Example{"TabBar", "TabBar {}", "UITabBar", "UITabBar"},
                    Example{"Slider", "Slider {}", "UISlider", "UIControl"},
                    Example{"ProgressBar", "ProgressBar {}", "UIProgressView", "UIProgressView"}),
    [](const auto& info) { return info.param.name; });

class OwnTypes : public QuickScreen {
 protected:
  void add(const char* file, const char* text) {
    QFile output(folder_.filePath(QString::fromLatin1(file)));
    ASSERT_TRUE(output.open(QIODevice::WriteOnly));
    output.write(text);
  }
  std::string imported() const {
    return "import \"file://" + folder_.path().toStdString() + "\"\n";
  }

  QTemporaryDir folder_;
};

TEST_F(OwnTypes, KeepTheirNamesWithoutTheEnginesNumbers) {
  add("CalcKey.qml", "import QtQuick.Controls 2.15\nButton { text: \"7\" }");
  add("BigKey.qml", "CalcKey { property int size }");
  add("Panel.qml", "import QtQuick 2.15\nRectangle {}");
  add("Row7.qml", "import QtQuick 2.15\nItem { width: 100; height: 20 }");
  add("Ask.qml", "import QtQuick.Controls 2.15\nDialog {}");
  add("Screen.qml",
      "import QtQuick 2.15\nimport QtQuick.Controls 2.15\nItem {\n"
      "CalcKey { objectName: \"key\"; property int more }\nBigKey { objectName: \"big\" }\n"
      "Panel { objectName: \"panel\" }\n"
      "ListView { objectName: \"list\"; width: 100; height: 90; model: 2; delegate: Row7 {} }\n"
      "ListView { objectName: \"fields\"; width: 90; height: 90; model: 2; delegate: TextField {} "
      "}\n"
      "Ask { objectName: \"ask\"; visible: true } }");
  show("Loader { source: \"file://" + folder_.filePath("Screen.qml").toStdString() + "\" }");
  const auto superclassOf = [&](const char* name) {
    return view(name)->getClass()->superclass()->name();
  };
  EXPECT_EQ(view("key")->getClass()->name(), "CalcKey");
  EXPECT_EQ(superclassOf("key"), "UIButton");
  EXPECT_EQ(view("big")->getClass()->name(), "BigKey");
  EXPECT_EQ(superclassOf("big"), "CalcKey");
  EXPECT_EQ(view("panel")->getClass()->name(), "Panel");
  EXPECT_EQ(superclassOf("panel"), "UIView");
  ASSERT_TRUE(runUntil([&] { return view("list")->subviews().size() == 2; }));
  const auto row = view("list")->subviews().front()->getClass();
  EXPECT_EQ(row->name(), "Row7");
  EXPECT_EQ(row->superclass()->name(), "UITableViewCell");
  ASSERT_TRUE(runUntil([&] { return view("fields")->subviews().size() == 2; }));
  EXPECT_TRUE(view("fields")->subviews().front()->isKindOfClass(uikit::UITextField));
  const UIViewRef dialog = root()->subviews().back();
  EXPECT_EQ(dialog->getClass()->name(), "Ask");
  EXPECT_TRUE(dialog->isKindOfClass(uikit::UIAlertView));
  EXPECT_EQ(dialog->accessibilityIdentifier(), "ask");
}

}  // namespace
}  // namespace tarni::test

// The names of classes of the application's own.
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include "tests/quick/QuickScreen.h"

namespace tarni::test {
namespace {

class OwnTypes : public QuickScreen {
 protected:
  void add(const char* file, const char* text) {
    QFile output(folder_.filePath(QString::fromLatin1(file)));
    ASSERT_TRUE(output.open(QIODevice::WriteOnly));
    output.write(text);
  }
  // Beside the types, which it therefore knows.
  void showScreen(const char* items) {
    const std::string imports = "import QtQuick 2.15\nimport QtQuick.Controls 2.15\n";
    add("Screen.qml", (imports + items).c_str());
    show("Loader { source: \"file://" + folder_.filePath("Screen.qml").toStdString() + "\" }");
  }

  QTemporaryDir folder_;
};

TEST_F(OwnTypes, KeepTheirNamesWithoutTheEnginesNumbers) {
  add("CalcKey.qml", "import QtQuick.Controls 2.15\nButton { text: \"7\" }");
  add("BigKey.qml", "CalcKey { property int size }");
  add("Panel.qml", "import QtQuick 2.15\nRectangle {}");
  add("Row7.qml", "import QtQuick 2.15\nItem { width: 100; height: 20 }");
  add("Ask.qml", "import QtQuick.Controls 2.15\nDialog {}");
  showScreen(
      "Item {\n"
      "CalcKey { objectName: \"key\"; property int more }\nBigKey { objectName: \"big\" }\n"
      "Panel { objectName: \"panel\" }\n"
      "ListView { objectName: \"list\"; width: 100; height: 90; model: 2; delegate: Row7 {} }\n"
      "ListView { objectName: \"fields\"; width: 90; height: 90; model: 2; delegate: TextField {} "
      "}\n"
      "Ask { objectName: \"ask\"; visible: true } }");
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

TEST_F(OwnTypes, ThatAreCalledSwitchesAreToggledWhereTheyCanBe) {
  add("PowerSwitch.qml", "import QtQuick.Controls 2.15\nButton { checkable: true }");
  add("LightSwitch.qml", "import QtQuick 2.15\nRectangle { property bool checked }");
  add("SwitchUser.qml", "import QtQuick.Controls 2.15\nButton { text: \"Switch user\" }");
  showScreen(R"(Column {
    PowerSwitch { objectName: "power" } LightSwitch { objectName: "light" }
    SwitchUser { objectName: "user" }
    ListView { objectName: "list"; width: 90; height: 90; model: 1
      delegate: SwitchDelegate {} } })");
  ASSERT_TRUE(runUntil([&] { return view("list")->subviews().size() == 1; }));
  for (const UIViewRef& called : {view("power"), view("light"), view("list")->subviews().front()}) {
    const auto control = as<platform::UISwitch>(called);
    ASSERT_TRUE(control) << called->getClass()->name();
    finish(control->setOn(true));
    EXPECT_TRUE(control->isOn()) << called->getClass()->name();
  }
  EXPECT_FALSE(as<platform::UISwitch>(view("user")));
}

}  // namespace
}  // namespace tarni::test

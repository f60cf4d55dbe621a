// Tabs, menu entries and header sections, which are not widgets either.
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QWidgetAction>

#include "tests/qt/Support.h"

namespace tarni::test {
namespace {

std::vector<std::string> titlesOf(const std::vector<UIViewRef>& buttons) {
  std::vector<std::string> titles;
  for (const UIViewRef& button : buttons) {
    titles.push_back(as<platform::UIButton>(button)->currentTitle().value_or(""));
  }
  return titles;
}

TEST(Tabs, StayThemselvesWhenOthersCloseOrAreMoved) {
  QTabWidget paged;
  QTabBar bare;
  for (const char* title : {"One", "Two", "Three"}) {
    paged.addTab(new QWidget, title);
    bare.addTab(title);
  }
  for (QTabBar* const bar : {paged.tabBar(), &bare}) {
    show(*bar->window());
    const std::vector<UIViewRef> buttons = subviewsOf(viewOf(*bar), "UITabBarButton");
    bar == &bare ? bare.removeTab(0) : paged.removeTab(0);
    EXPECT_TRUE(buttons[0]->isHidden());
    EXPECT_EQ(titlesOf({buttons[1], buttons[2]}), (std::vector<std::string>{"Two", "Three"}));
    bar->moveTab(0, 1);
    EXPECT_EQ(titlesOf({buttons[1], buttons[2]}), (std::vector<std::string>{"Two", "Three"}));
    EXPECT_EQ(subviewsOf(viewOf(*bar), "UITabBarButton"),
              (std::vector<UIViewRef>{buttons[2], buttons[1]}));
  }
}

TEST(Actions, OfMenusAndMenuBarsAreButtons) {
  QMainWindow window;
  QMenu* const file = window.menuBar()->addMenu("&File");
  window.menuBar()->addMenu("R&&D");
  QAction* const open = file->addAction("&Open…\tCtrl+O");
  file->addSeparator();
  QAction* const grid = file->addAction("Grid");
  grid->setObjectName("grid");
  grid->setCheckable(true);
  file->addAction("Gone")->setVisible(false);
  QAction* const off = file->addAction("Off");
  off->setEnabled(false);
  auto* const own = new QWidgetAction(file);
  own->setDefaultWidget(new QLabel("zoom"));
  file->addAction(own);
  show(window);
  EXPECT_THAT(titlesOf(subviewsOf(viewOf(*window.menuBar()), "UIActionButton")),
              testing::ElementsAre("File", "R&D"));
  file->popup(QPoint(0, 0));
  QCoreApplication::processEvents();
  const UIViewRef menu = viewOf(*file);
  EXPECT_EQ(classOf(menu), "UIWindow");
  const std::vector<UIViewRef> buttons = subviewsOf(menu, "UIActionButton");
  ASSERT_THAT(titlesOf(buttons), testing::ElementsAre("Open…", "Grid", "Off"));
  EXPECT_EQ(menu->hitTest(middleInWindow(buttons[0])), buttons[0]);
  EXPECT_EQ(buttons[1]->accessibilityIdentifier(), "grid");
  EXPECT_EQ(buttons[1]->accessibilityValue(), "not checked");
  EXPECT_FALSE(buttons[2]->isUserInteractionEnabled());
  EXPECT_EQ(menu->hitTest(middleInWindow(viewOf(*own->defaultWidget()))),
            viewOf(*own->defaultWidget()));
  delete open;
  EXPECT_TRUE(buttons[0]->isHidden());
  EXPECT_EQ(buttons[0]->superview(), nullptr);
  EXPECT_EQ(titlesOf({buttons[0]}), std::vector<std::string>{""});
  EXPECT_EQ(subviewsOf(menu, "UIActionButton"), (std::vector{buttons[1], buttons[2]}));
  file->hide();
}

TEST(Actions, FoldedAwayByAMenuBarAreHidden) {
  QMainWindow window;
  for (const char* title : {"File", "Edit", "View", "Tools", "Window", "Help"}) {
    window.menuBar()->addMenu(title);
  }
  window.resize(120, 100);
  show(window);
  const auto buttons = subviewsOf(viewOf(*window.menuBar()), "UIActionButton");
  ASSERT_EQ(buttons.size(), 6U);
  EXPECT_FALSE(buttons.front()->isHidden());
  EXPECT_TRUE(buttons.back()->isHidden());
  window.resize(600, 100);
  QCoreApplication::processEvents();
  EXPECT_FALSE(buttons.back()->isHidden());
}

TEST(Actions, AnActionAtTheAddressOfOneThatWentIsAnotherButton) {
  QMenu menu;
  alignas(QAction) std::byte room[sizeof(QAction)];
  auto* action = new (room) QAction("one");
  menu.addAction(action);
  menu.popup(QPoint(0, 0));
  const UIViewRef first = subviewsOf(viewOf(menu), "UIActionButton").front();
  action->~QAction();
  action = new (room) QAction("two");
  menu.addAction(action);
  const UIViewRef second = subviewsOf(viewOf(menu), "UIActionButton").front();
  EXPECT_NE(first, second);
  EXPECT_TRUE(first->isHidden());
  EXPECT_EQ(titlesOf({second}), std::vector<std::string>{"two"});
  action->~QAction();
}

TEST(Headers, HaveAButtonForEachVisibleSection) {
  QTableWidget table(3, 3);
  table.setHorizontalHeaderLabels({"Name", "Size", "Date"});
  table.setColumnHidden(1, true);
  table.resize(500, 300);
  show(table);
  const UIViewRef header = viewOf(*table.horizontalHeader());
  EXPECT_EQ(classOf(header), "UITableViewHeaderFooterView");
  EXPECT_FALSE(header->isKindOfClass(uikit::UITableView));
  EXPECT_EQ(header->superview(), viewOf(table));
  const std::vector<UIViewRef> buttons = subviewsOf(header, "UITableViewHeaderButton");
  ASSERT_THAT(titlesOf(buttons), testing::ElementsAre("Name", "Date"));
  EXPECT_EQ(viewOf(table)->hitTest(middleInWindow(buttons[1])), buttons[1]);
  table.setColumnCount(4);
  EXPECT_EQ(subviewsOf(header, "UITableViewHeaderButton")[1], buttons[1]);
  table.removeColumn(0);
  EXPECT_TRUE(buttons[0]->isHidden()) << "its index is another section now";
  EXPECT_TRUE(buttons[1]->isHidden());
}

}  // namespace
}  // namespace tarni::test

// Items that have no cell yet, and values that are chosen by their text.
#include <QtCore/QStringListModel>
#include <QtGui/QStandardItemModel>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTreeView>

#include "platform/Foundation/NSException.h"
#include "platform/UIKit/UIItems.h"
#include "tests/qt/Support.h"

namespace tarni::test {
namespace {

bool scrollTo(QWidget& view, const std::string& text) {
  std::optional<bool> found;
  finish(storeResult(as<platform::UIItems>(viewOf(view))->scrollToText(text), found));
  return found.value();
}

void choose(QWidget& control, const std::string& value) {
  finish(as<platform::UIValueControl>(viewOf(control))->chooseValue(value));
}

std::string valueOf(QWidget& control) {
  return as<platform::UIValueControl>(viewOf(control))->currentValue();
}

// A list that tells its rows in parts.
struct Growing : QStringListModel {
  bool canFetchMore(const QModelIndex&) const override { return rowCount() < 1000; }
  void fetchMore(const QModelIndex&) override {
    const int row = rowCount();
    insertRow(row);
    setData(index(row), QString("Row %1").arg(row));
  }
};

TEST(Items, AreBroughtOnScreenByTheirTextWithoutACell) {
  QListView list;
  Growing model;
  list.setModel(&model);
  show(list);
  EXPECT_EQ(as<platform::UIItems>(viewOf(list))->numberOfColumns(), 1);
  EXPECT_TRUE(scrollTo(list, "Row 900"));
  EXPECT_TRUE(list.viewport()->rect().contains(list.visualRect(model.index(900)).center()));
  EXPECT_FALSE(scrollTo(list, "Row 1000"));
  EXPECT_EQ(as<platform::UIItems>(viewOf(list))->numberOfRows(), 1000);
}

TEST(Items, OfClosedNodesAreShownByOpeningThem) {
  QTreeView tree;
  QStandardItemModel model;
  auto* const outer = new QStandardItem("Outer");
  auto* const inner = new QStandardItem("Inner");
  inner->appendRow({new QStandardItem("Leaf"), new QStandardItem("Second")});
  outer->appendRow(inner);
  model.appendRow(outer);
  tree.setModel(&model);
  show(tree);
  EXPECT_TRUE(scrollTo(tree, "Second"));
  EXPECT_TRUE(tree.isExpanded(outer->index()));
  EXPECT_TRUE(tree.isExpanded(inner->index()));
  const auto view = subviewsOf(viewOf(tree), "UITableViewCell").at(0);
  const auto cell = as<platform::UIItemCell>(view);
  EXPECT_EQ(cell->place().row, 0);
  EXPECT_EQ(view->isExpanded(), true);
  finish(cell->setExpanded(false));
  EXPECT_FALSE(tree.isExpanded(outer->index()));
  EXPECT_FALSE(scrollTo(tree, "No such"));
}

TEST(Values, AreChosenAsByAPersonOrRefused) {
  QComboBox box;
  box.addItems({"one", "two", "three"});
  QSpinBox number;
  number.setRange(1, 9);
  number.setSuffix(" kg");
  QDateEdit date;
  date.setDisplayFormat("yyyy-MM-dd");
  QSlider slider(Qt::Horizontal);
  QTabBar tabs;
  tabs.addTab("&First");
  tabs.addTab("Second");
  QSignalSpy activated(&box, qOverload<int>(&QComboBox::activated));
  QSignalSpy finished(&number, &QSpinBox::editingFinished);
  QSignalSpy moved(&slider, &QSlider::sliderMoved);
  QSignalSpy clicked(&tabs, &QTabBar::tabBarClicked);
  struct Row {
    QWidget& control;
    const char* value;
    const char* shown;
    const char* refused;
  };
  for (const Row& row : {Row{box, "three", "three", "four"}, Row{number, "7", "7 kg", "12"},
                         Row{date, "2031-02-03", "2031-02-03", "tomorrow"},
                         Row{slider, "40", "40", "400"}, Row{tabs, "Second", "Second", "Third"}}) {
    show(row.control);
    choose(row.control, row.value);
    EXPECT_EQ(valueOf(row.control), row.shown);
    EXPECT_THROW(choose(row.control, row.refused), platform::NSException) << row.refused;
    EXPECT_EQ(valueOf(row.control), row.shown);
  }
  EXPECT_EQ(number.value(), 7);
  EXPECT_EQ(date.date(), QDate(2031, 2, 3));
  for (const QSignalSpy* const spy : {&activated, &finished, &moved, &clicked}) {
    EXPECT_EQ(spy->count(), 1) << spy->signal().toStdString();
  }
  box.setEditable(true);
  choose(box, "four");
  EXPECT_EQ(valueOf(box), "four");
}

}  // namespace
}  // namespace tarni::test

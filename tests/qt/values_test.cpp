// Items that have no cell yet, and values that are chosen by their text.
#include <QtCore/QAbstractListModel>
#include <QtGui/QStandardItemModel>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTableView>
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

// A list that tells its many rows in parts.
struct Growing : QAbstractListModel {
  static constexpr int kRows = 200'000;
  int known = 0;

  int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : known; }
  QVariant data(const QModelIndex& index, int role) const override {
    return role == Qt::DisplayRole ? QString("Row %1").arg(index.row()) : QVariant();
  }
  bool canFetchMore(const QModelIndex&) const override { return known < kRows; }
  void fetchMore(const QModelIndex&) override {
    beginInsertRows({}, known, known + kRows / 10 - 1);
    known += kRows / 10;
    endInsertRows();
  }
};

TEST(Items, AreBroughtOnScreenByTheirTextWithoutACell) {
  QListView list;
  list.setUniformItemSizes(true);
  Growing model;
  list.setModel(&model);
  show(list);
  EXPECT_EQ(as<platform::UIItems>(viewOf(list))->numberOfColumns(), 1);
  EXPECT_TRUE(scrollTo(list, "Row 180000"));
  EXPECT_TRUE(list.viewport()->rect().contains(list.visualRect(model.index(180000)).center()));
  EXPECT_FALSE(scrollTo(list, "Row 200000"));
  EXPECT_EQ(as<platform::UIItems>(viewOf(list))->numberOfRows(), Growing::kRows);
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

TEST(Items, TakeAValueWhereAPersonCouldEditThem) {
  QTableView table;
  QStandardItemModel model(1, 2);
  model.setItem(0, 0, new QStandardItem("Name"));
  model.setItem(0, 1, new QStandardItem);
  model.item(0, 1)->setData(7, Qt::EditRole);
  table.setModel(&model);
  show(table);
  const auto cells = subviewsOf(viewOf(table), "UITableViewCell");
  const auto set = [&](std::size_t column, const std::string& value) {
    finish(as<platform::UIItemCell>(cells.at(column))->setCellValue(value));
  };
  set(0, "Other");
  set(1, "12");
  EXPECT_EQ(model.item(0, 0)->text(), "Other");
  EXPECT_EQ(model.item(0, 1)->data(Qt::EditRole), QVariant(12));
  EXPECT_THROW(set(1, "twelve"), platform::NSException);
  table.setEditTriggers(QAbstractItemView::NoEditTriggers);
  EXPECT_THROW(set(0, "Third"), platform::NSException);
  EXPECT_EQ(model.item(0, 0)->text(), "Other");
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

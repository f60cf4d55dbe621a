// Items that have no cell yet, and cells that take a value.
#include <QtCore/QAbstractListModel>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QListView>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTableView>

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

TEST(Values, AreTakenByASpinBoxThatReadsNoTextWhileItIsTyped) {
  QSpinBox box;
  box.setKeyboardTracking(false);
  show(box);
  finish(as<platform::UIValueControl>(viewOf(box))->chooseValue("7"));
  EXPECT_EQ(box.value(), 7);
}

}  // namespace
}  // namespace tarni::test

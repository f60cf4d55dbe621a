// Rows and cells of item views, which are not widgets.
#include <QtCore/QAbstractTableModel>
#include <QtCore/QStringListModel>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QTreeView>
#include <algorithm>

#include "tests/qt/Support.h"

namespace tarni::test {
namespace {

std::vector<std::string> textsOf(const std::vector<UIViewRef>& cells) {
  std::vector<std::string> texts;
  for (const UIViewRef& cell : cells) {
    texts.push_back(as<platform::UITableViewCell>(cell)->cellText().value_or(""));
  }
  return texts;
}

std::vector<UIViewRef> cellsOf(QAbstractItemView& view) {
  return subviewsOf(viewOf(view), "UITableViewCell");
}

QStringList rows(int count) {
  QStringList texts;
  for (int row = 0; row < count; ++row) texts << QString("Row %1").arg(row);
  return texts;
}

// What the view itself says stands at the middles of the cells: nobody else's idea of geometry.
void expectCellsWhereTheyAre(QAbstractItemView& view) {
  for (const UIViewRef& cell : cellsOf(view)) {
    const CGPoint middle = middleInWindow(cell);
    EXPECT_EQ(viewOf(*view.window())->hitTest(middle), cell);
    const QPoint point = view.viewport()->mapFrom(
        view.window(), QPoint(static_cast<int>(middle.x), static_cast<int>(middle.y)));
    EXPECT_EQ(view.indexAt(point).data().toString().toStdString(),
              as<platform::UITableViewCell>(cell)->cellText().value_or(""));
  }
}

class BigModel : public QAbstractTableModel {
 public:
  using QAbstractTableModel::QAbstractTableModel;
  int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : 1000000; }
  int columnCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : 3; }
  QVariant data(const QModelIndex& index, int role) const override {
    ++asked;
    if (role != Qt::DisplayRole) return {};
    return QString("%1/%2").arg(index.row()).arg(index.column());
  }

  mutable int asked = 0;
};

template <typename View>
class BigViews : public testing::Test {};

class UniformTree : public QTreeView {
 public:
  UniformTree() { setUniformRowHeights(true); }
};
class UniformList : public QListView {
 public:
  UniformList() { setUniformItemSizes(true); }
};

using BigViewTypes = testing::Types<QTableView, UniformTree, UniformList>;
TYPED_TEST_SUITE(BigViews, BigViewTypes, );

TYPED_TEST(BigViews, CostWhatIsSeenOfThem) {
  BigModel model;
  TypeParam view;
  view.setModel(&model);
  view.resize(320, 240);
  show(view);
  view.scrollTo(model.index(500000, 0));
  QCoreApplication::processEvents();
  model.asked = 0;
  const std::vector<UIViewRef> cells = cellsOf(view);
  EXPECT_GE(cells.size(), 5U);
  EXPECT_LE(cells.size(), 200U);
  EXPECT_LE(model.asked, 2000) << "looks at what is on screen only";
  EXPECT_THAT(textsOf(cells), testing::Contains("500000/0"));
  expectCellsWhereTheyAre(view);
  EXPECT_EQ(viewOf(view)->subviews().data(), viewOf(view)->subviews().data());
}

TEST(Cells, AreReadRowByRowFromTheStartOfTheLine) {
  QTableWidget table(2, 3);
  for (int row = 0; row < 2; ++row) {
    for (int column = 0; column < 3; ++column) {
      table.setItem(row, column, new QTableWidgetItem(QString("%1%2").arg(row).arg(column)));
    }
  }
  table.resize(600, 300);
  show(table);
  EXPECT_THAT(textsOf(cellsOf(table)), testing::ElementsAre("00", "01", "02", "10", "11", "12"));
  table.horizontalHeader()->moveSection(2, 0);
  EXPECT_THAT(textsOf(cellsOf(table)), testing::ElementsAre("02", "00", "01", "12", "10", "11"));
  table.horizontalHeader()->moveSection(0, 2);
  table.setColumnHidden(1, true);
  EXPECT_THAT(textsOf(cellsOf(table)), testing::ElementsAre("00", "02", "10", "12"));
  table.setColumnHidden(1, false);
  table.setLayoutDirection(Qt::RightToLeft);
  QCoreApplication::processEvents();
  EXPECT_THAT(textsOf(cellsOf(table)), testing::ElementsAre("00", "01", "02", "10", "11", "12"));
  expectCellsWhereTheyAre(table);
}

TEST(Cells, ACellThatSpansOthersIsOne) {
  QTableWidget table(3, 3);
  table.setItem(0, 0, new QTableWidgetItem("wide"));
  table.setSpan(0, 0, 2, 2);
  table.resize(600, 300);
  show(table);
  EXPECT_EQ(cellsOf(table).size(), 6U);
  EXPECT_EQ(std::ranges::count(textsOf(cellsOf(table)), "wide"), 1);
}

TEST(Cells, StayTheSameViewsWhileTheirItemsAreOnScreen) {
  QStringListModel model(rows(5));
  QListView list;
  list.setModel(&model);
  list.resize(200, 400);
  show(list);
  const std::vector<UIViewRef> before = cellsOf(list);
  ASSERT_EQ(before.size(), 5U);
  model.insertRow(1);
  QCoreApplication::processEvents();
  const std::vector<UIViewRef> after = cellsOf(list);
  ASSERT_EQ(after.size(), 6U);
  EXPECT_EQ(after[0], before[0]);
  EXPECT_EQ(after[2], before[1]);
  EXPECT_EQ(textsOf({after[2]}), std::vector<std::string>{"Row 1"});
  model.removeRow(0);
  QCoreApplication::processEvents();
  EXPECT_EQ(cellsOf(list)[1], before[1]);
  EXPECT_TRUE(before[0]->isHidden()) << "its item has gone";
  EXPECT_EQ(before[0]->superview(), nullptr);
  EXPECT_EQ(before[0]->window(), nullptr);
  EXPECT_EQ(before[0]->bounds(), CGRect{});
  EXPECT_EQ(as<platform::UITableViewCell>(before[0])->cellText(), std::nullopt);
}

TEST(Cells, OutliveTheirItemViewAsEmptyViews) {
  QStringListModel model(rows(3));
  auto list = std::make_unique<QListView>();
  list->setModel(&model);
  show(*list);
  const UIViewRef cell = cellsOf(*list).front();
  list.reset();
  EXPECT_TRUE(cell->isHidden());
  EXPECT_EQ(cell->superview(), nullptr);
  EXPECT_EQ(cell->frame(), CGRect{});
  EXPECT_EQ(pictureOf(cell), nullptr);
}

TEST(Cells, AtTheEdgeAreAsLargeAsWhatIsSeenOfThem) {
  QStringListModel model(rows(100));
  QListView list;
  list.setModel(&model);
  list.resize(200, 203);
  show(list);
  list.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list.verticalScrollBar()->setValue(7);
  QCoreApplication::processEvents();
  const std::vector<UIViewRef> cells = cellsOf(list);
  const double top = list.viewport()->y();
  EXPECT_EQ(cells.front()->frame().minY(), top);
  EXPECT_LT(cells.front()->bounds().size.height, cells[1]->bounds().size.height);
  EXPECT_EQ(cells.back()->frame().maxY(), top + list.viewport()->height());
  expectCellsWhereTheyAre(list);
}

TEST(Cells, OfATreeAreTheExpandedRowsInEachColumn) {
  QStandardItemModel model;
  auto* const fruit = new QStandardItem("Fruit");
  fruit->appendRow({new QStandardItem("Apple"), new QStandardItem("red")});
  model.appendRow({fruit, new QStandardItem("2")});
  model.appendRow({new QStandardItem("Nuts"), new QStandardItem("0")});
  QTreeView tree;
  tree.setModel(&model);
  tree.resize(400, 300);
  show(tree);
  EXPECT_THAT(textsOf(cellsOf(tree)), testing::ElementsAre("Fruit", "2", "Nuts", "0"));
  tree.expandAll();
  QCoreApplication::processEvents();
  EXPECT_THAT(textsOf(cellsOf(tree)),
              testing::ElementsAre("Fruit", "2", "Apple", "red", "Nuts", "0"));
  expectCellsWhereTheyAre(tree);
  tree.setFirstColumnSpanned(0, QModelIndex(), true);
  EXPECT_THAT(textsOf(cellsOf(tree)), testing::ElementsAre("Fruit", "Apple", "red", "Nuts", "0"));
}

// One item view for each way in which a list lays its items out.
struct ListLayout {
  const char* name;
  QListView::Flow flow;
  bool wrapping;
  QListView::ViewMode mode;
  Qt::LayoutDirection direction;
};

void PrintTo(const ListLayout& layout, std::ostream* out) {
  *out << layout.name;
}

class Lists : public testing::TestWithParam<ListLayout> {};

TEST_P(Lists, ShowExactlyTheItemsThatAreOnScreen) {
  QListWidget list;
  for (int row = 0; row < 500; ++row) {
    // Of different sizes, and some of them hidden.
    auto* const item = new QListWidgetItem(QString("%1").arg(row), &list);
    item->setSizeHint(QSize(50 + row % 3 * 10, 20 + row % 4 * 5));
    item->setHidden(row % 7 == 3);
  }
  list.setViewMode(GetParam().mode);
  list.setMovement(QListView::Static);
  list.setFlow(GetParam().flow);
  list.setWrapping(GetParam().wrapping);
  list.setLayoutDirection(GetParam().direction);
  list.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  list.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list.resize(300, 200);
  show(list);
  const char* const kind =
      GetParam().mode == QListView::IconMode ? "UICollectionViewCell" : "UITableViewCell";
  for (const int percent : {0, 33, 71, 100}) {
    for (QScrollBar* bar : {list.horizontalScrollBar(), list.verticalScrollBar()}) {
      bar->setValue(bar->maximum() * percent / 100);
    }
    QCoreApplication::processEvents();
    std::vector<std::string> expected;
    for (int row = 0; row < list.count(); ++row) {
      const QRect rect = list.visualItemRect(list.item(row));
      if (!list.item(row)->isHidden() && rect.intersects(list.viewport()->rect())) {
        expected.push_back(std::to_string(row));
      }
    }
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(textsOf(subviewsOf(viewOf(list), kind)), expected) << percent << "% scrolled";
  }
}

INSTANTIATE_TEST_SUITE_P(
    LaidOut, Lists,
    testing::Values(
        ListLayout{"Down", QListView::TopToBottom, false, QListView::ListMode, Qt::LeftToRight},
        ListLayout{"Across", QListView::LeftToRight, false, QListView::ListMode, Qt::LeftToRight},
        ListLayout{"DownWrapped", QListView::TopToBottom, true, QListView::ListMode,
                   Qt::LeftToRight},
        ListLayout{"AcrossWrapped", QListView::LeftToRight, true, QListView::ListMode,
                   Qt::LeftToRight},
        ListLayout{"Icons", QListView::LeftToRight, true, QListView::IconMode, Qt::LeftToRight},
        ListLayout{"IconsDown", QListView::TopToBottom, true, QListView::IconMode, Qt::LeftToRight},
        ListLayout{"FromTheRight", QListView::LeftToRight, false, QListView::ListMode,
                   Qt::RightToLeft}),
    [](const auto& info) { return info.param.name; });

TEST(Cells, TellTheirCheckMarkStateAndHint) {
  QListWidget list;
  auto* const item = new QListWidgetItem("Sugar", &list);
  item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
  item->setCheckState(Qt::Unchecked);
  item->setToolTip("<b>sweet</b>");
  item->setData(Qt::AccessibleTextRole, "Sugar, a spoon");
  auto* const plain = new QListWidgetItem("Salt", &list);
  plain->setFlags(Qt::NoItemFlags);
  show(list);
  const std::vector<UIViewRef> cells = cellsOf(list);
  EXPECT_EQ(cells[0]->accessibilityValue(), "not checked");
  item->setCheckState(Qt::Checked);
  EXPECT_EQ(cells[0]->accessibilityValue(), "checked");
  EXPECT_EQ(cells[0]->accessibilityHint(), "sweet");
  EXPECT_EQ(cells[0]->accessibilityLabel(), "Sugar, a spoon");
  EXPECT_TRUE(cells[0]->isUserInteractionEnabled());
  EXPECT_EQ(cells[1]->accessibilityValue(), std::nullopt);
  EXPECT_EQ(cells[1]->accessibilityLabel(), "Salt");
  EXPECT_FALSE(cells[1]->isUserInteractionEnabled());
}

TEST(Cells, ShowNumbersAsTheViewWritesThem) {
  QTableWidget table(1, 1);
  table.setLocale(QLocale(QLocale::German));
  table.setItem(0, 0, new QTableWidgetItem);
  table.item(0, 0)->setData(Qt::DisplayRole, 1234.5);
  show(table);
  EXPECT_EQ(textsOf(cellsOf(table)), std::vector<std::string>{"1.234,5"});
}

TEST(Cells, AnEditorStandsAboveThem) {
  QListWidget list;
  auto* const item = new QListWidgetItem("name", &list);
  item->setFlags(item->flags() | Qt::ItemIsEditable);
  show(list);
  const UIViewRef cell = cellsOf(list).front();
  const CGPoint middle = middleInWindow(cell);
  list.editItem(item);
  QCoreApplication::processEvents();
  auto* const editor = list.findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(viewOf(list)->hitTest(middle), viewOf(*editor));
  EXPECT_EQ(viewOf(*editor)->superview(), viewOf(list));
}

TEST(Cells, AHiddenItemViewHasNone) {
  QStringListModel model(rows(3));
  QWidget window;
  QListView list(&window);
  list.setModel(&model);
  EXPECT_TRUE(cellsOf(list).empty());
  show(window);
  EXPECT_EQ(cellsOf(list).size(), 3U);
}

}  // namespace
}  // namespace tarni::test

#include <set>

#include "backends/headless/views/TableView.h"
#include "tests/headless/TouchScreen.h"

namespace tarni::headless::test {
namespace {

class CollectionsTest : public TouchScreen {
 protected:
  static std::vector<std::string> rows(int count) {
    std::vector<std::string> texts;
    for (int row = 0; row < count; ++row) texts.push_back(std::to_string(row));
    return texts;
  }
  static std::vector<std::string> shown(const TableView& table) {
    std::vector<std::string> texts;
    for (const auto& view : table.subviews()) {
      texts.push_back(platform::as<platform::UITableViewCell>(view)->cellText().value());
    }
    return texts;
  }

  std::shared_ptr<TableView> table = build<TableView>(50).frame({{0, 0}, {200, 140}}).in(*window);
};

TEST_F(CollectionsTest, CellsExistForRowsInSightOnly) {
  std::set<ViewRef> made;
  table->setItems(1000, [&](long item, const ViewRef& reusable) -> ViewRef {
    const auto cell = reusable ? reusable : std::make_shared<TableViewCell>(std::to_string(item));
    std::static_pointer_cast<TableViewCell>(cell)->setText(std::to_string(item));
    made.insert(cell);
    return cell;
  });
  EXPECT_THAT(shown(*table), testing::ElementsAre("0", "1", "2"));
  table->scrollTo({0, 120});
  EXPECT_THAT(shown(*table), testing::ElementsAre("2", "3", "4", "5"));
  EXPECT_EQ(table->cellForItem(0), nullptr);
  EXPECT_EQ(table->cellForItem(3)->frame(), (CGRect{{0, 150}, {200, 50}}));
  table->scrollTo({0, 60});
  EXPECT_THAT(shown(*table), testing::ElementsAre("1", "2", "3")) << "in order also backwards";
  for (double offset = 0; offset < 20000; offset += 100) table->scrollTo({0, offset});
  EXPECT_LE(made.size(), 8U) << "they are used again";
  table->scrollTo({0, 1e6});
  EXPECT_TRUE(shown(*table).empty());
  table->scrollTo({0, 0});
  table->setRows({"only"});
  EXPECT_THAT(shown(*table), testing::ElementsAre("only"));
}

TEST_F(CollectionsTest, ATapSelectsTheRowUnderIt) {
  table->setRows(rows(10));
  long selected = -1;
  table->onSelect([&](long row) { selected = row; });
  const auto cell = table->cellForItem(1);
  EXPECT_EQ(window->hitTest({100, 75})->getClass()->name(), "UITableViewCellContentView");
  environment.finger().tap(*cell);
  EXPECT_EQ(selected, 1);
  environment.finger().drag(*table, {100, 120}, {100, 60});
  EXPECT_EQ(selected, 1) << "a drag scrolls";
  EXPECT_EQ(table->contentOffset().y, 60);
}

}  // namespace
}  // namespace tarni::headless::test

// Texts, and what the agent does to controls as the program hears of it.
#include <QtCore/QStringListModel>
#include <QtGui/QAccessible>
#include <QtGui/QIntValidator>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QDial>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

#include "backends/qt/program/Stillness.h"
#include "tests/qt/Support.h"

namespace tarni::test {
namespace {

std::optional<std::string> labelText(QLabel& label) {
  return as<platform::UILabel>(viewOf(label))->labelText();
}

TEST(Texts, OfLabelsAreWhatIsReadOnScreen) {
  QWidget window;
  QLineEdit field(&window);
  QLabel label(&window);
  EXPECT_EQ(labelText(label), std::nullopt);
  label.setText("a & b");
  EXPECT_EQ(labelText(label), "a & b");
  label.setText("<b>bold</b> &amp; <i>italic</i>");
  EXPECT_EQ(labelText(label), "bold & italic");
  label.setTextFormat(Qt::PlainText);
  EXPECT_EQ(labelText(label), "<b>bold</b> &amp; <i>italic</i>");
  label.setTextFormat(Qt::MarkdownText);
  label.setText("**strong**");
  EXPECT_EQ(labelText(label), "strong");
  label.setTextFormat(Qt::AutoText);
  label.setText("&Name");
  EXPECT_EQ(labelText(label), "&Name");
  label.setBuddy(&field);
  EXPECT_EQ(labelText(label), "Name") << "with a buddy the mark is a mnemonic";
}

TEST(Texts, OfWidgetsWithoutOneAreTheSameWhileTheProgramHoldsStill) {
  QWidget window;
  const std::vector<QWidget*> widgets = {
      new QWidget(&window),   new QPushButton(&window),       new QPushButton("text", &window),
      new QCheckBox(&window), new QToolButton(&window),       new QLineEdit("text", &window),
      new QSpinBox(&window),  new QSlider(&window),           new QScrollBar(&window),
      new QDial(&window),     new QGroupBox("text", &window), new QDateEdit(&window)};
  const auto labels = [&] {
    std::vector<std::optional<std::string>> all;
    for (QWidget* const widget : widgets) all.push_back(viewOf(*widget)->accessibilityLabel());
    return all;
  };
  const auto nameless = labels();
  EXPECT_EQ(nameless.front(), std::nullopt);
  {
    const auto held = qt::stillness();
    EXPECT_EQ(labels(), nameless);
  }
  for (QWidget* const widget : widgets) (new QLabel("named", &window))->setBuddy(widget);
  const auto held = qt::stillness();
  EXPECT_EQ(labels().front(), "named");
  EXPECT_EQ(labels()[4], "named") << "a tool button";
}

TEST(Texts, OfAccessibilityComeFromTheProgramOrTheToolkit) {
  QWidget window;
  window.setWindowTitle("Title");
  window.setLocale(QLocale("de_AT"));
  QWidget widget(&window);
  const UIViewRef view = viewOf(widget);
  EXPECT_EQ(viewOf(window)->accessibilityLabel(), "Title");
  EXPECT_EQ(view->accessibilityLabel(), std::nullopt);
  EXPECT_EQ(view->accessibilityLanguage(), "de-AT");
  widget.setObjectName("qt_internal");
  EXPECT_EQ(view->accessibilityIdentifier(), std::nullopt);
  widget.setObjectName("mine");
  EXPECT_EQ(view->accessibilityIdentifier(), "mine");
  widget.setAccessibleDescription("described");
  EXPECT_EQ(view->accessibilityHint(), "described");
  widget.setToolTip("<i>tip</i>");
  EXPECT_EQ(view->accessibilityHint(), "tip");
  QGroupBox group("&Options", &window);
  group.setCheckable(true);
  EXPECT_EQ(viewOf(group)->accessibilityLabel(), "Options");
  EXPECT_EQ(viewOf(group)->accessibilityValue(), std::nullopt) << "it is called by its title";
  QComboBox combo(&window);
  combo.addItems({"first", "second"});
  EXPECT_EQ(viewOf(combo)->accessibilityValue(), "first");
  QStatusBar status(&window);
  status.showMessage("Ready");
  EXPECT_EQ(viewOf(status)->accessibilityLabel(), "Ready");
  EXPECT_FALSE(QAccessible::isActive()) << "asking must not switch it on";
}

TEST(Typing, IsOneEditThatTheProgramHearsOfAndThatAPersonCouldMake) {
  QWidget window;
  QLineEdit field("old", &window);
  show(window);
  QSignalSpy edited(&field, &QLineEdit::textEdited);
  QSignalSpy changed(&field, &QLineEdit::textChanged);
  const auto input = as<platform::UITextField>(viewOf(field));
  finish(input->setText("Größe 🐦"));
  EXPECT_EQ(field.text().toStdString(), "Größe 🐦");
  EXPECT_EQ(edited.count(), 1);
  EXPECT_EQ(changed.count(), 1);
  field.undo();
  EXPECT_EQ(field.text().toStdString(), "old");
  QIntValidator digits(0, 99, &field);
  field.setValidator(&digits);
  finish(input->setText("abc"));
  EXPECT_EQ(field.text().toStdString(), "old") << "not what the field does not take";
  field.setValidator(nullptr);
  field.setMaxLength(3);
  finish(input->setText("abcdef"));
  field.setReadOnly(true);
  finish(input->setText("x"));
  field.setReadOnly(false);
  field.setEnabled(false);
  finish(input->setText("x"));
  EXPECT_EQ(field.text().toStdString(), "abc");
}

TEST(Switch, IsSetAsByAClick) {
  QWidget window;
  QCheckBox box(&window);
  QSignalSpy clicked(&box, &QCheckBox::clicked);
  QSignalSpy toggled(&box, &QCheckBox::toggled);
  const auto view = as<platform::UISwitch>(viewOf(box));
  finish(view->setOn(true));
  EXPECT_TRUE(view->isOn());
  finish(view->setOn(true));
  EXPECT_EQ(clicked.count(), 1);
  EXPECT_EQ(toggled.count(), 1);
  finish(view->setOn(false));
  EXPECT_FALSE(box.isChecked());
  box.setEnabled(false);
  finish(view->setOn(true));
  EXPECT_FALSE(box.isChecked());
  box.setEnabled(true);
  box.setTristate();
  box.setCheckState(Qt::PartiallyChecked);
  finish(view->setOn(false));
  EXPECT_EQ(box.checkState(), Qt::Unchecked) << "it goes as far as it must";
  QCheckBox alone(&window);
  QButtonGroup group;
  group.addButton(&alone);
  alone.setChecked(true);
  QSignalSpy clickedAlone(&alone, &QCheckBox::clicked);
  finish(as<platform::UISwitch>(viewOf(alone))->setOn(false));
  EXPECT_TRUE(alone.isChecked()) << "one of the group always is";
  EXPECT_EQ(clickedAlone.count(), 1);
}

TEST(Focus, OnlyTextInputsTakeItFromTheAgent) {
  QWidget window;
  QVBoxLayout layout(&window);
  QLineEdit first;
  QLineEdit second;
  QPushButton button("b");
  QLabel label("l");
  QSpinBox box;
  for (QWidget* widget : std::initializer_list<QWidget*>{&first, &second, &button, &label, &box}) {
    layout.addWidget(widget);
  }
  show(window);
  EXPECT_TRUE(viewOf(first)->canBecomeFirstResponder());
  EXPECT_FALSE(viewOf(button)->canBecomeFirstResponder());
  EXPECT_FALSE(viewOf(label)->canBecomeFirstResponder());
  finish(viewOf(second)->becomeFirstResponder());
  EXPECT_TRUE(viewOf(second)->isFirstResponder());
  EXPECT_FALSE(viewOf(first)->isFirstResponder());
  const UIViewRef inside = subviewsOf(viewOf(box), "UITextField").front();
  finish(inside->becomeFirstResponder());
  EXPECT_FALSE(inside->isFirstResponder()) << "nobody has typed: the arrows give the focus as well";
  finish(as<platform::UITextField>(inside)->setText("5"));
  EXPECT_TRUE(inside->isFirstResponder());
  EXPECT_FALSE(viewOf(second)->isFirstResponder());
  button.setFocusProxy(&box);
  EXPECT_FALSE(viewOf(button)->isFirstResponder()) << "it leaves the focus to another control";
  second.setEnabled(false);
  EXPECT_FALSE(viewOf(second)->canBecomeFirstResponder());
}

double scrolled(QAbstractScrollArea& area, double points) {
  const auto view = as<platform::UIScrollView>(viewOf(area));
  CGPoint offset = view->contentOffset();
  offset.y += points;
  finish(view->setContentOffset(offset, true));
  QCoreApplication::processEvents();
  return as<platform::UIScrollView>(viewOf(area))->contentOffset().y;
}

TEST(Scrolling, RowsAndLinesScrollAboutAsManyPointsAsAnAreaAndAsFarAsThereIsContent) {
  QStringList rows;
  for (int row = 0; row < 500; ++row) rows << QString("Row %1").arg(row);
  QStringListModel model(rows);
  QListView list;
  QTableView table;
  for (QAbstractItemView* view : std::initializer_list<QAbstractItemView*>{&list, &table}) {
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    view->setModel(&model);
    view->resize(200, 400);
    show(*view);
    const QModelIndex row = model.index(50, 0);
    const int before = view->visualRect(row).top();
    scrolled(*view, 200);
    EXPECT_NEAR(before - view->visualRect(row).top(), 200, 20) << view->metaObject()->className();
    scrolled(*view, -9999);
    EXPECT_EQ(view->verticalScrollBar()->value(), 0);
  }
  QPlainTextEdit text(rows.join('\n'));
  text.resize(200, 400);
  show(text);
  scrolled(text, 200);
  EXPECT_NEAR(text.verticalScrollBar()->value() * text.fontMetrics().lineSpacing(), 200, 20);
  QScrollArea area;
  auto* const page = new QWidget;
  page->resize(100, 1000);
  area.setWidget(page);
  area.resize(200, 200);
  show(area);
  EXPECT_EQ(scrolled(area, 200), 200);
  EXPECT_EQ(page->y(), -200);
  EXPECT_EQ(scrolled(area, 5000), area.verticalScrollBar()->maximum());
}

}  // namespace
}  // namespace tarni::test

// Every standard control of Qt Quick on one page. It knows nothing of the agent. What the page
// tells by console.info is a line on the standard output: "colour=Blue".

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QStandardItemModel>
#include <cstdio>

namespace {

constexpr int kTableSide = 3;

void writeLine(QtMsgType type, const QMessageLogContext&, const QString& text) {
  std::FILE* const stream = type == QtInfoMsg ? stdout : stderr;
  std::fprintf(stream, "%s\n", text.toUtf8().constData());
  std::fflush(stream);
}

void fillTable(QStandardItemModel* table) {
  for (int row = 0; row < kTableSide; ++row) {
    for (int column = 0; column < kTableSide; ++column) {
      const QString place = QChar('a' + column) + QString::number(row + 1);
      table->setItem(row, column, new QStandardItem(place));
    }
  }
}

void fillTree(QStandardItemModel* tree) {
  for (const QStringList& branch :
       {QStringList{"Trees", "Oak", "Beech"}, QStringList{"Herbs", "Mint", "Thyme"}}) {
    auto* const top = new QStandardItem(branch.front());
    for (const QString& leaf : branch.mid(1)) top->appendRow(new QStandardItem(leaf));
    tree->appendRow(top);
  }
}

}  // namespace

int main(int argc, char** argv) {
  qInstallMessageHandler(writeLine);
  const QGuiApplication application(argc, argv);
  QStandardItemModel table;
  QStandardItemModel tree;
  fillTable(&table);
  fillTree(&tree);
  QQmlApplicationEngine engine;
  engine.rootContext()->setContextProperty("tableModel", &table);
  engine.rootContext()->setContextProperty("treeModel", &tree);
  engine.rootContext()->setContextProperty("hasTree", QT_VERSION_MAJOR > 5);
  engine.load(QStringLiteral("qrc:/main.qml"));
  return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}

#include "tests/controls/ControlsTable.h"

#include <fstream>
#include <regex>
#include <stdexcept>

namespace tarni::test {
namespace {

double part(const std::ssub_match& percent) {
  return percent.matched ? std::stod(percent) / 100 : 0.5;
}

std::vector<Act> actsIn(const std::string& cell) {
  static const std::regex kPattern(
      "([a-z-]+)(?: (beside|in))? `([^`]+)`(?: at (-?\\d+)%(?: (-?\\d+)%)?)?(?: by (-?\\d+))?(?:, "
      "|$)");
  std::vector<Act> acts;
  std::size_t read = 0;
  for (std::sregex_iterator at(cell.begin(), cell.end(), kPattern), end; at != end; ++at) {
    const auto& match = *at;
    const bool isOfKeyboard = match[1] == "type" || match[1] == "press";
    Act act{match[1], {}, isOfKeyboard ? match[3].str() : ""};
    if (match[2] == "beside") act.target.kind = Target::Kind::BesideLabel;
    if (match[2] == "in") act.target.kind = Target::Kind::Window;
    if (!isOfKeyboard) act.target.text = match[3];
    act.target.x = part(match[4]);
    act.target.y = part(match[5]);
    if (match[6].matched) act.pixels = std::stoi(match[6]);
    acts.push_back(act);
    read += static_cast<std::size_t>(match.length());
  }
  if (read != cell.size()) throw std::runtime_error("no acts: " + cell);
  return acts;
}

// What stands between backticks.
std::vector<std::string> textsIn(const std::string& cell) {
  static const std::regex kPattern("`([^`]*)`");
  std::vector<std::string> texts;
  for (std::sregex_iterator at(cell.begin(), cell.end(), kPattern), end; at != end; ++at) {
    texts.push_back((*at)[1]);
  }
  return texts;
}

std::vector<std::string> cellsOf(const std::string& line) {
  std::vector<std::string> cells;
  for (std::size_t start = 2, end = 0; start < line.size(); start = end + 3) {
    end = line.find(" |", start);
    if (end == line.npos) throw std::runtime_error("no row: " + line);
    cells.push_back(line.substr(start, end - start));
  }
  if (cells.size() != 6) throw std::runtime_error("no six columns: " + line);
  return cells;
}

Row rowOf(const std::string& line) {
  const auto cells = cellsOf(line);
  Row row{cells[0], actsIn(cells[1]), textsIn(cells[2]), textsIn(cells[3]), textsIn(cells[4])};
  if (cells[5] == "the same") return row;
  row.played = cells[5].ends_with("stops there") ? Row::Played::Stops : Row::Played::Otherwise;
  row.statesPlayed = textsIn(cells[5]);
  return row;
}

}  // namespace

std::vector<Session> sessionsOf(const std::string& toolkit, char major) {
  std::ifstream file(std::string(TARNI_SOURCES) + "/docs/controls.md");
  const std::string other = std::string("(Qt ") + (major == '5' ? "6)" : "5)");
  std::vector<Session> sessions;
  bool isWanted = false;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("## ")) isWanted = line == "## " + toolkit;
    if (!isWanted || !line.starts_with("|")) continue;
    if (line.starts_with("| Control |")) {
      sessions.emplace_back();
    } else if (!line.starts_with("|-") && line.find(other) == line.npos) {
      sessions.back().push_back(rowOf(line));
    }
  }
  if (sessions.empty()) throw std::runtime_error("no tables of " + toolkit);
  return sessions;
}

}  // namespace tarni::test

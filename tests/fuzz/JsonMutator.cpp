#include "tests/fuzz/JsonMutator.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <utility>

#include "tests/fuzz/Lines.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace tarni::test {
namespace {

using Json = nlohmann::ordered_json;
using Lines = std::vector<std::string>;

// Deeper texts are left to the changes of bytes: writing one is a recursion.
constexpr long kDeepest = 100;

std::vector<Json>& known() {
  static auto& all = *[] {
    auto* const lines = new std::vector<Json>{Json::object()};
    for (const auto& seed : std::filesystem::directory_iterator(TARNI_SEEDS)) {
      std::ifstream file(seed.path());
      for (std::string line; std::getline(file, line);) {
        if (line.ends_with(',')) line.pop_back();
        Json value = Json::parse(line, nullptr, false);
        if (!value.is_discarded()) lines->push_back(std::move(value));
      }
    }
    return lines;
  }();
  return all;
}

class Mutation {
 public:
  explicit Mutation(unsigned seed) : random_(seed) {}

  std::size_t below(std::size_t count) { return count < 2 ? 0 : random_() % count; }
  template <typename Items>
  auto& oneOf(Items& items) {
    return items[below(std::size(items))];
  }

  void changeLines(Lines& lines) {
    switch (below(12)) {
      case 0:
        lines.insert(lines.begin() + static_cast<long>(below(lines.size() + 1)),
                     written(oneOf(known())));
        break;
      case 1:
        lines.push_back(oneOf(lines));
        break;
      case 2:
        if (lines.size() > 1) lines.erase(lines.begin() + static_cast<long>(below(lines.size())));
        break;
      case 3:
        std::swap(oneOf(lines), oneOf(lines));
        break;
      default:
        changeLine(oneOf(lines), oneOf(known()));
    }
  }

  // A part of it becomes another, maybe one of `other`. What is not JSON is changed as bytes; the
  // comma of an entry of a list stays.
  void changeLine(std::string& line, const Json& other) {
    const bool hasComma = line.ends_with(',');
    const bool isFlat = std::ranges::count(line, '[') + std::ranges::count(line, '{') < kDeepest;
    Json value = isFlat ? Json::parse(line.begin(), line.end() - (hasComma ? 1 : 0), nullptr, false)
                        : Json(Json::value_t::discarded);
    if (value.is_discarded()) return changeBytes(line);
    change(partOf(value), partOf(other));
    line = written(value);
    if (hasComma) line += ',';
  }

 private:
  static std::string written(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::ignore);
  }

  // The value, or any that is in it.
  template <typename Value>
  Value& partOf(Value& value) {
    Value* part = &value;
    while (part->is_structured() && !part->empty() && below(4) > 0) {
      part = &*std::next(part->begin(), static_cast<long>(below(part->size())));
    }
    return *part;
  }

  void change(Json& part, const Json& other) {
    switch (below(8)) {
      case 0:
        part = other;
        break;
      case 1:
        part = strange();
        break;
      case 2:
        part = below(2) == 0 ? Json::array({part}) : Json{{"element", part}};
        break;
      default:
        if (part.is_structured()) {
          changeMembers(part, other);
        } else if (part.is_number()) {
          changeNumber(part);
        } else if (part.is_string()) {
          changeBytes(part.get_ref<std::string&>());
        } else {
          part = strange();
        }
    }
  }

  void changeMembers(Json& part, const Json& other) {
    if (part.is_object() && other.is_object() && below(2) == 0) {
      const auto from = std::next(other.begin(), static_cast<long>(below(other.size())));
      if (from != other.end()) part[from.key()] = *from;
    } else if (part.is_array() && below(2) == 0) {
      part.push_back(part.empty() || below(2) == 0 ? other : Json(oneOf(part)));
    } else if (!part.empty()) {
      part.erase(std::next(part.begin(), static_cast<long>(below(part.size()))));
    }
  }

  void changeNumber(Json& number) {
    const double value = number;
    const Json near[] = {
        number.is_number_integer() ? Json(number.get<std::int64_t>() + 1) : Json(value + 1),
        value - 1, -value, value * 1000, value / 3};
    number = oneOf(near);
  }

  Json strange() {
    static const auto& values = *new std::vector<Json>{
        nullptr, true,          false,         0, 1, -1, 0.5, 1e308, INT64_MIN, UINT64_MAX, "",
        "a",     Json::array(), Json::object()};
    return oneOf(values);
  }

  void changeBytes(std::string& text) {
    const std::size_t size = text.size();
    text.resize(size + 32);
    text.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(text.data()), size, text.size()));
    std::ranges::replace(text, '\n', ' ');
  }

  std::minstd_rand random_;
};

std::size_t put(const Lines& lines, std::uint8_t* data, std::size_t most) {
  std::string text;
  for (const std::string& line : lines) text += (&line == lines.data() ? "" : "\n") + line;
  if (text.size() > most) return 0;
  std::memcpy(data, text.data(), text.size());
  return text.size();
}

}  // namespace

void teach(Json line) {
  known().push_back(std::move(line));
}

}  // namespace tarni::test

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed) {
  tarni::test::Mutation mutation(seed);
  if (mutation.below(8) > 0) {
    auto lines = tarni::test::linesOf(data, size);
    mutation.changeLines(lines);
    if (const std::size_t written = tarni::test::put(lines, data, most)) return written;
  }
  return LLVMFuzzerMutate(data, size, most);
}

// A line of the one gets a part of a line of the other, or stands in front of its lines.
extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* one, std::size_t oneSize,
                                                 const std::uint8_t* other, std::size_t otherSize,
                                                 std::uint8_t* out, std::size_t most,
                                                 unsigned seed) {
  tarni::test::Mutation mutation(seed);
  auto lines = tarni::test::linesOf(one, oneSize);
  auto others = tarni::test::linesOf(other, otherSize);
  auto value = nlohmann::ordered_json::parse(mutation.oneOf(others), nullptr, false);
  if (value.is_discarded()) {
    lines.resize(1 + mutation.below(lines.size()));
    lines.insert(lines.end(), others.begin() + static_cast<long>(mutation.below(others.size())),
                 others.end());
  } else {
    mutation.changeLine(mutation.oneOf(lines), value);
  }
  return tarni::test::put(lines, out, most);
}

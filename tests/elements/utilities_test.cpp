// JSON, numbers, messages and pictures.
#include "agent/core/state/Utilities_Json.h"
#include "agent/core/state/Utilities_Messages.h"

#include <array>

#include "platform/Foundation/Lowercase.h"
#include "tests/elements/CommandScreen.h"

namespace tarni::test {
namespace {

class UtilitiesTest : public CommandScreen {
 protected:
  static std::optional<Json> dictionary(const std::string& text) {
    constexpr std::array<std::string_view, 2> kKeys{"a", "b"};
    return Utilities::convertStringToMutableDictionary(text, kKeys);
  }
};

TEST_F(UtilitiesTest, ADictionaryHoldsWhatItIsAskedForAndTheLastOfTwo) {
  EXPECT_EQ(dictionary("{\"a\":1,\"x\":{\"b\":[\"b\",2],\"a\":3},\"b\":\"é\",\"a\":null}\r\n"),
            Json::parse("{\"a\":null,\"b\":\"é\"}"));
  EXPECT_EQ(dictionary("{\"x\":[{\"a\":1}],\"b\":[[1],{}],\"a\":{\"b\":0}}"),
            Json::parse("{\"b\":[],\"a\":{}}"));
  const auto nested = [](std::size_t levels) {
    return "{\"a\":" + std::string(levels, '[') + std::string(levels, ']') + "}";
  };
  EXPECT_EQ(dictionary(nested(511)), Json::parse("{\"a\":[]}"));
  EXPECT_EQ(dictionary(nested(512)), std::nullopt);
}

TEST_F(UtilitiesTest, TextKnowsMoreThanAsciiAndBearsWhatIsNotUtf8) {
  EXPECT_EQ(platform::lowercaseString("ÄPFEL und ЯБЛОКИ 🍎"), "äpfel und яблоки 🍎");
  EXPECT_EQ(platform::lowercaseString("AB\xFF"), "ab\xFF");
  Json array = Json::array({"ab\xC3 \xFF!"});
  EXPECT_EQ(Utilities::convertNSArrayToString(array), "[\"ab\uFFFD \uFFFD!\"]");
}

TEST_F(UtilitiesTest, AToastGoesAfterFiveSeconds) {
  Utilities::ShowToastMessage("Switched");
  EXPECT_TRUE(environment.alerts().shown().empty()) << "it waits for the main queue";
  drainMainQueue();
  ASSERT_EQ(environment.alerts().shown().size(), 1U);
  const auto& alert = *environment.alerts().shown().front();
  EXPECT_EQ(alert.message, "Switched");
  EXPECT_EQ(alert.cancelButtonTitle, std::nullopt);
  EXPECT_EQ(alert.otherButtonTitle, std::nullopt);
  time.pass(4.9);
  EXPECT_TRUE(alert.isVisible());
  time.pass(0.2);
  EXPECT_EQ(alert.clicked, 0);
}

}  // namespace
}  // namespace tarni::test

// JSON, numbers, messages and pictures.
#include "agent/commands/FunctionCallObject.h"
#include "agent/core/state/Utilities_Json.h"
#include "agent/core/state/Utilities_Messages.h"
#include "agent/core/state/Utilities_Text.h"
#include "agent/elements/Utilities_Images.h"

#include <array>
#include <set>

#include "backends/headless/views/Label.h"
#include "platform/Foundation/NSException.h"
#include "tests/elements/Screen.h"

namespace tarni::test {
namespace {

using testing::MatchesRegex;

class UtilitiesTest : public Screen {
 protected:
  static std::optional<Json> dictionary(const std::string& text) {
    constexpr std::array<std::string_view, 2> kKeys{"a", "b"};
    return Utilities::convertStringToMutableDictionary(text, kKeys);
  }
};

TEST_F(UtilitiesTest, JsonTextIsCompactAndKeepsTheOrderOfKeys) {
  const Json array = Json::parse(R"([ {"z": "1", "a": "é/\n"} ])");
  EXPECT_EQ(Utilities::convertNSArrayToString(array), R"([{"z":"1","a":"é/\n"}])");
  EXPECT_EQ(Utilities::convertMutableDictionaryToString(array[0]), R"({"z":"1","a":"é/\n"})");
  EXPECT_EQ(Utilities::convertNSArrayToString(nullptr), std::nullopt);
  EXPECT_EQ(Utilities::convertNSArrayToString("text"), std::nullopt);
}

TEST_F(UtilitiesTest, JsonTextReplacesWhatIsNotUtf8) {
  Json array = Json::array({"ab\xC3 \xFF!"});
  EXPECT_EQ(Utilities::convertNSArrayToString(array), "[\"ab\uFFFD \uFFFD!\"]");
}

TEST_F(UtilitiesTest, ParsingGivesNothingForTheWrongKindOrNoJson) {
  EXPECT_EQ(Utilities::convertStringToNSArray("[1,2]"), Json::parse("[1,2]"));
  EXPECT_EQ(Utilities::convertStringToNSArray("{}"), std::nullopt);
  for (const char* text : {"", "[]", "null", "3", "{\"a\"", "{} {}", "{\"a\":\"\xFF\"}"}) {
    EXPECT_EQ(dictionary(text), std::nullopt) << text;
  }
}

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

TEST_F(UtilitiesTest, GuidsAreFreshUpperCaseUuids) {
  std::set<std::string> guids;
  for (int made = 0; made < 1000; ++made) guids.insert(Utilities::getGUIDString());
  EXPECT_EQ(guids.size(), 1000U);
  EXPECT_THAT(*guids.begin(), MatchesRegex("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}"));
}

TEST_F(UtilitiesTest, NumbersAreRoundedAndUseAPoint) {
  EXPECT_EQ(Utilities::decimalText(100.4, 0), "100");
  EXPECT_EQ(Utilities::decimalText(100.6, 0), "101");
  EXPECT_EQ(Utilities::decimalText(-0.256, 2), "-0.26");
  EXPECT_EQ(Utilities::decimalText(7, 2), "7.00");
  EXPECT_EQ(Utilities::decimalText(1e300, 0).size(), 301U);
}

TEST_F(UtilitiesTest, LowerCaseKnowsMoreThanAscii) {
  EXPECT_EQ(Utilities::lowercaseString("ÄPFEL und ЯБЛОКИ 🍎"), "äpfel und яблоки 🍎");
  EXPECT_EQ(Utilities::lowercaseString("AB\xFF"), "ab\xFF");
  EXPECT_EQ(Utilities::lowercaseString(""), "");
}

TEST_F(UtilitiesTest, ACommandHasTheFieldsOfItsJson) {
  const FunctionCallObject call = Utilities::createFunctionCallObject(Json::parse(
      R"({"functionname":"Find","tagname":"T","accessortype":"A","accessorvalue":"V",
          "datavalue":"D","functiontype":"F","functionresulttype":"R","other":1})"));
  EXPECT_EQ(call.getFunctionName(), "find");
  EXPECT_EQ(call.getTagName(), "T");
  EXPECT_EQ(call.getAccessorType(), "a");
  EXPECT_EQ(call.getAccessorValue(), "V");
  EXPECT_EQ(call.getDataValue(), "D");
  EXPECT_EQ(call.getFunctionType(), "F");
  EXPECT_EQ(call.getFunctionResultType(), "R");
}

TEST_F(UtilitiesTest, AFieldThatIsNoTextFailsWhenItIsAskedFor) {
  EXPECT_EQ(Utilities::createFunctionCallObject(std::nullopt).getFunctionName(), "");
  const Json noText = Json::parse(R"({"functionname":null,"datavalue":[]})");
  const FunctionCallObject call = Utilities::createFunctionCallObject(noText);
  EXPECT_EQ(call.getFunctionName(), "");
  EXPECT_THROW(call.getDataValue(), platform::NSException);
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

TEST_F(UtilitiesTest, AnAlertIsOnlyFlashed) {
  Utilities::ShowAlertMessage("went wrong");
  drainMainQueue();
  ASSERT_EQ(environment.alerts().shown().size(), 1U);
  const auto& alert = *environment.alerts().shown().front();
  EXPECT_EQ(alert.message, "went wrong");
  EXPECT_EQ(alert.cancelButtonTitle, "Cancel");
  EXPECT_EQ(alert.otherButtonTitle, "Ok");
  EXPECT_EQ(alert.clicked, 0);
}

TEST_F(UtilitiesTest, PicturesAreJpegsOfTheViewAtTheScreensScale) {
  const auto label = add<headless::Label>("Hello").get();
  const auto image = complete(Utilities::getUIImageOfUIView(label));
  ASSERT_TRUE(image);
  EXPECT_EQ(image->size(), (platform::CGSize{100, 40}));
  const std::string text = complete(Utilities::getBase64StringOfUIImageOfUIView(label));
  EXPECT_TRUE(text.starts_with("/9j/")) << "the first bytes of a JPEG";
  EXPECT_EQ(text.find('\n'), std::string::npos);
}

TEST_F(UtilitiesTest, TouchedAreaIsThreeHundredByTwoHundred) {
  const auto label = add<headless::Label>("Hello").get();
  const platform::CGPoint corner{0, 0};
  const auto image = complete(Utilities::getUIImageOfUIViewTouchedArea(label, corner));
  ASSERT_TRUE(image);
  EXPECT_EQ(image->size(), (platform::CGSize{300, 200}));
  EXPECT_TRUE(complete(Utilities::getBase64StringOfUIImageOfUIViewTouchedArea(label, corner))
                  .starts_with("/9j/"));
}

TEST_F(UtilitiesTest, AnEmptyViewHasAnEmptyPicture) {
  const auto label = add<headless::Label>("Hello").frame({{0, 0}, {0, 0}}).get();
  EXPECT_EQ(complete(Utilities::getBase64StringOfUIImageOfUIView(label)), "");
}

}  // namespace
}  // namespace tarni::test

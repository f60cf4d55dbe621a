#include <algorithm>

#include "tests/conformance/Subject.h"

namespace tarni::test {
namespace {

const nlohmann::json kNothing = nlohmann::json::array();

TEST_P(Conformance, WhatIsNoCommandIsAnsweredWithNothing) {
  const Wire& wire = playback().wire();
  for (const char* text : {"", "hello", "{", "[]", "42", "null", "\"findelements\"", "{}",
                           R"({"functionname":"nosuchcommand"})", "Connect your client",
                           R"({"functionname":"clickelement","accessorvalue":"nobody"})"}) {
    wire.sendLine(text);
    EXPECT_EQ(wire.readMessage(), "[]") << text;
  }
}

// These go to the page first.
TEST_P(Conformance, CommandsOfPagesAreAnsweredWithNothingWhereThereIsNone) {
  for (const char* name : {"findelements", "findelementsinsideelement", "clickelement",
                           "sendkeysonelement", "gettext"}) {
    EXPECT_EQ(playback().ask({{"functionname", name},
                              {"tagname", "input"},
                              {"accessortype", "text"},
                              {"accessorvalue", "');alert('"},
                              {"datavalue", "\\"}}),
              kNothing)
        << name;
  }
}

TEST_P(Conformance, ValuesThatAreNoTextAreAnswered) {
  const Wire& wire = playback().wire();
  for (const char* value : {"1", "null", "true", "[\"x\"]", "{\"a\":{}}", "1e400", "-0"}) {
    for (const char* key : {"functionname", "tagname", "accessortype", "accessorvalue"}) {
      wire.sendLine(std::string("{\"functionname\":\"findelements\",\"") + key + "\":" + value +
                    "}");
      EXPECT_TRUE(nlohmann::json::accept(wire.readMessage())) << key << " " << value;
    }
  }
  EXPECT_EQ(playback().find("UIButton", "text", "Log in").size(), 1U);
}

TEST_P(Conformance, AMegabyteWithoutLineEndIsOneCommand) {
  const Wire& wire = playback().wire();
  playback().command("nothing");  // from here on a command ends at its line end
  wire.send(std::string(1 << 20, 'x'));
  wire.send("\r\n");
  EXPECT_EQ(wire.readMessage(), "[]");
  EXPECT_EQ(
      playback().ask({{"functionname", "findelements"}, {"tagname", std::string(100'000, 'T')}}),
      kNothing);
}

TEST_P(Conformance, BytesThatAreNoUtf8AreAnswered) {
  const Wire& wire = playback().wire();
  wire.send("{\"functionname\":\"find\xff\xc3\x28\"}\r\n");
  EXPECT_EQ(wire.readMessage(), "[]");
  std::string withNul = R"({"functionname":"gettext","accessorvalue":"#"})";
  std::ranges::replace(withNul, '#', '\0');
  wire.sendLine(withNul);
  EXPECT_EQ(wire.readMessage(), "[]");
}

TEST_P(Conformance, SeveralCommandsInOneSegmentAreAnsweredInOrder) {
  const Wire& wire = playback().wire();
  playback().command("nothing");
  wire.send("{\"functionname\":\"findelements\",\"tagname\":\"UISwitch\"}\r\nnothing\r\n");
  EXPECT_NE(wire.readMessage().find("elementID"), std::string::npos);
  EXPECT_EQ(wire.readMessage(), "[]");
}

TEST_P(Conformance, AccessorValuesWithAnyCharacterAreAnswered) {
  for (const std::string& value :
       {std::string("\"'\\\\\""), std::string("\x01\x1f\x7f\t\n"), std::string("\xf0\x9f\x98\x80"),
        std::string("\xe2\x80\xa8"), std::string("%s%n%@")}) {
    for (const char* type : {"text", "partialtext", "xpath", "\\"}) {
      EXPECT_TRUE(playback().find("", type, value).empty()) << type << " " << value;
    }
  }
}

TEST_P(Conformance, AClientMayLeaveInTheMiddleOfACommand) {
  {
    Playback leaving;
    const std::string button = leaving.one("UIButton", "text", "Log in");
    leaving.wire().sendLine(R"({"functionname":"clickelement","accessorvalue":")" + button + "\"}");
  }
  const Playback next(false);
  EXPECT_EQ(next.find("UIButton", "text", "Log in").size(), 1U);
  EXPECT_TRUE(program_->isRunning());
}

}  // namespace
}  // namespace tarni::test

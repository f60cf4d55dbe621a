#include "tests/conformance/Subject.h"

namespace tarni::test {
namespace {

TEST_P(Conformance, BadInputIsAnswered) {
  const Wire& wire = playback().wire();
  const auto answer = [&wire](const std::string& line) {
    wire.sendLine(line);
    return wire.readMessage();
  };
  for (const std::string& line :
       {std::string(""), std::string("hello"), std::string("{"), std::string("[]"),
        std::string("null"), std::string("\"findelements\""), std::string("{}"),
        std::string(R"({"functionname":"nosuchcommand"})"), std::string("Connect your client"),
        std::string(R"({"functionname":"clickelement","accessorvalue":"nobody"})"),
        std::string("{\"functionname\":\"find\xff\xc3\x28\"}"),
        std::string("{\"functionname\":\"gettext\",\"accessorvalue\":\"\0\"}", 46)}) {
    EXPECT_EQ(answer(line), "[]") << line;
  }
  for (const std::string value : {"1", "true", "[\"x\"]", "{\"a\":{}}", "-0"}) {
    for (const std::string key : {"functionname", "tagname", "accessortype", "accessorvalue"}) {
      EXPECT_EQ(answer("{\"functionname\":\"findelements\",\"" + key + "\":" + value + "}"),
                "[{\"exceptionmsg\":\"" + key + " must be a string\"}]")
          << value;
    }
  }
  EXPECT_TRUE(nlohmann::json::accept(answer(R"({"functionname":"findelements","tagname":1e400})")));
  const nlohmann::json switches = {
      {"functionname", "findelements"}, {"tagname", "UISwitch"}, {"functiontype", 1}};
  EXPECT_TRUE(playback().ask(switches)[0].contains("elementID")) << "no command reads that key";
  for (const char* value : {"\"'\\\\\"", "\x01\x1f\x7f\t\n", "\xe2\x80\xa8", "%s%n%@"}) {
    for (const char* type : {"text", "partialtext", "xpath", "\\"}) {
      EXPECT_TRUE(playback().find("", type, value).empty()) << type << " " << value;
    }
  }
  // These go to a page first, and there is none.
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
  EXPECT_EQ(playback().find("UIButton", "text", "Log in").size(), 1U);
}

TEST_P(Conformance, ACommandIsALineOfUpToSixteenMegabytes) {
  const Wire& wire = playback().wire();
  playback().command("nothing");  // from here on a command ends at its line end
  wire.send(std::string(1 << 20, 'x'));
  wire.send("\r\n");
  EXPECT_EQ(wire.readMessage(), "[]");
  EXPECT_TRUE(playback().find(std::string(100'000, 'T')).empty());
  wire.send("{\"functionname\":\"findelements\",\"tagname\":\"UISwitch\"}\r\nnothing\r\n");
  EXPECT_NE(wire.readMessage().find("elementID"), std::string::npos);
  EXPECT_EQ(wire.readMessage(), "[]");
  const auto answerTo = [&wire](std::size_t megabytes) {
    wire.sendLine(R"({"functionname":7})" + std::string(megabytes << 20, ' '));
    return wire.readMessage();
  };
  EXPECT_NE(answerTo(15).find("exceptionmsg"), std::string::npos);
  EXPECT_EQ(answerTo(17), "[]") << "too long to be a command";
}

TEST_P(Conformance, AClientMayLeaveInTheMiddleOfACommand) {
  {
    Playback leaving;
    const std::string button = leaving.one("UIButton", "text", "Log in");
    leaving.wire().sendLine(R"({"functionname":"clickelement","accessorvalue":")" + button + "\"}");
  }
  const Playback next(false);
  EXPECT_EQ(next.find("UIButton", "text", "Log in").size(), 1U)
      << "and the next one is not greeted";
  EXPECT_FALSE(Wire::accepts(kRecorderPort)) << "though nobody ever used it";
  EXPECT_TRUE(program_->isRunning());
}

TEST_P(Conformance, RecorderCommandsAreNeverAnsweredAndNeverHarm) {
  const Wire recorder(kRecorderPort);
  recorder.readMessage();
  for (const char* line : {"STARTobjectspy", "highlight=0", "highlight", "highlight=nine",
                           "highlight=-5", "no such thing", "please stopobjectspy now"}) {
    recorder.sendLine(line);
  }
  recorder.send("\xff\xfe\r\n");
  EXPECT_EQ(playback().find("UIButton", "text", "Log in").size(), 1U);
  EXPECT_TRUE(program_->isRunning());
}

}  // namespace
}  // namespace tarni::test

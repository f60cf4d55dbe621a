#include "host/player/SessionPlay.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "host/guard/Base64.h"
#include "host/guard/Files.h"
#include "host/player/JUnit.h"

namespace tarni::host {

bool SessionPlay::isWhole() const {
  return course_.from <= 1 && course_.until >= session_.steps().size();
}

bool SessionPlay::hasSteps() const {
  return isWhole() || course_.from <= std::min(course_.until, session_.steps().size());
}

std::vector<std::string> SessionPlay::secrets() const {
  const auto& steps = session_.steps();
  std::vector<std::string> names;
  for (std::size_t i = std::max<std::size_t>(course_.from, 1) - 1;
       i < std::min(course_.until, steps.size()); ++i) {
    const auto name = steps[i].secret();
    if (!name.empty() && std::ranges::find(names, name) == names.end()) names.push_back(name);
  }
  return names;
}

void SessionPlay::play(SessionClient& client, Player::Manner manner, PlayObserver& observer) {
  Player player(client, std::move(manner));
  plays_.push_back(player.play(session_, course_, observer));
}

SessionPlay::Tally SessionPlay::tally() const {
  Tally tally;
  for (const auto& play : plays_) {
    tally.seconds += secondsOf(play);
    for (const auto& played : play) {
      tally.wanted += played.result == Played::Result::NotPlayed ? 0 : 1;
      tally.passed += played.result == Played::Result::Passed ? 1 : 0;
    }
  }
  if (isWhole()) tally.wanted = std::max(tally.wanted, session_.steps().size() * plays_.size());
  return tally;
}

std::string SessionPlay::junit(const std::string& name) const {
  return junitXml(name, session_, plays_);
}

std::filesystem::path SessionPlay::writeReport(const std::filesystem::path& folder, PlayReport head,
                                               bool keepsPicturesBeside) const {
  head.recorded = session_.recorded;
  head.toolkit = session_.toolkit;
  std::size_t pictures = 0;
  const auto beside = [&](const Picture& picture) {
    const auto name = "pictures/" + std::to_string(++pictures) + "." + picture.format;
    writePrivateFile(folder / name, decodeBase64(picture.data));
    return name;
  };
  if (keepsPicturesBeside) makePrivateFolder(folder / "pictures");
  auto page = folder / "index.html";
  writePrivateFile(page,
                   head.page(PlayReport::shown(session_, plays_.back()),
                             keepsPicturesBeside ? PlayReport::Address(beside) : addressWithin));
  return page;
}

std::size_t SessionPlay::takeProposals() {
  std::size_t taken = 0;
  for (std::size_t i = 0; i < session_.steps().size(); ++i) {
    const Played& played = plays_.back()[i];
    if (played.proposal.is_null() || played.hasFailed()) continue;
    session_.replace(i, Step(played.proposal));
    ++taken;
  }
  return taken;
}

}  // namespace tarni::host

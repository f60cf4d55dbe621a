// OrderPage: a scripted page for backends without an engine: as much of the page of an order
// (samples/web/pages/form.html) as the cases for pages look at, with the answers that the page
// scripts give. One thread.
#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace tarni::test {

class OrderPage {
 public:
  // `navigate` is called when a link is clicked: it shows the next page when that has been loaded.
  explicit OrderPage(std::function<void()> navigate);

  // What a script that the agent evaluates answers.
  std::string evaluate(const std::string& script);
  void showNext();
  // The step of a person who presses the picture, for the agent to fetch.
  void pressPicture();
  // True once a command has looked for something.
  bool isPlayed() const { return isPlayed_; }

 private:
  struct Element {
    std::string tag;
    std::string text;
    std::string path;
    bool isInForm = true;
    std::string value = text;
  };

  static bool fits(const Element& element, const std::string& accessor, const std::string& value);
  std::string session(const std::string& call);
  std::string takeSteps();
  std::string find(const std::vector<std::string>& values, bool isInForm);
  std::string identifier(std::size_t place) const;
  Element* known(const std::string& id) const;
  std::string click(const Element* element);
  static std::string type(Element* element, const std::string& text);

  std::function<void()> navigate_;
  std::vector<Element> elements_;
  std::vector<Element*> known_;
  std::vector<nlohmann::json> steps_;
  int searches_ = 0;
  bool isPlayed_ = false;
};

}  // namespace tarni::test

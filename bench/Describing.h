// What is asked of a whole screen: to describe it, to describe its buttons, to find in it, to
// record a tap on it. Measured by how many views stand in it and how, on any toolkit.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/Task.h"
#include "platform/UIKit/UIView.h"

namespace tarni::bench {

enum class Shape {
  Flat,   // all in one parent, side by side
  Tree,   // ten in each parent
  Chain,  // each in the one before, all of the same place and size
};

struct Screens {
  std::string toolkit;
  // A key window with `count` views below it, which go with the next one: of every four one is a
  // button and one a label, both with a text that says the number ("Button 4", "Label 5").
  std::function<platform::UIWindowRef(Shape, long count)> show;
  // Runs the work until it has ended.
  std::function<void(platform::Task<void>)> finish;
  // How many views of each shape, each ten times the one before, up to what the toolkit itself
  // draws in seconds.
  std::map<Shape, std::vector<long>> counts;
  // What stands for a button.
  std::string button = "UIButton";
};

void measureDescribing(const Screens& screens);

// Where view `number` of `count` stands in its parent, so that all of them fill a window of that
// size.
platform::CGRect placeOf(Shape shape, long number, long count, platform::CGSize window);

// The parent of view `number`, when `views` are the window and the views before it.
template <typename View>
const View& parentOf(Shape shape, long number, const std::vector<View>& views) {
  if (shape == Shape::Flat) return views.front();
  return shape == Shape::Chain ? views.back() : views[static_cast<std::size_t>(number / 10)];
}

}  // namespace tarni::bench

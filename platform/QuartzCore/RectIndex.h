// RectIndex: which of many rectangles hold a point, those in front first, without going through all
// of them. For searches at the points of all views of a large screen. Plain value.
#pragma once

#include <cstddef>
#include <vector>

#include "platform/QuartzCore/CGGeometry.h"

namespace tarni::platform {

class RectIndex {
 public:
  RectIndex() = default;
  // The last one is in front. A rectangle whose edges are not numbers holds no point.
  explicit RectIndex(std::vector<CGRect> rects);

  // Calls `visit(position)` for the rectangles that hold the point, edges included, from front to
  // back, until one answers true.
  template <typename Visit>
  void eachAt(CGPoint point, Visit&& visit) const {
    if (nodes_.empty()) return;
    // What may hold rectangles further in front is looked into first.
    std::vector<Reach> waiting;
    enter(waiting, {nodes_.front().front, 0}, point);
    while (!waiting.empty()) {
      const Reach next = takeFront(waiting);
      if (next.node == kRect) {
        if (visit(next.front)) return;
        continue;
      }
      const Node& node = nodes_[next.node];
      if (node.left != 0) {
        enter(waiting, {nodes_[node.left].front, node.left}, point);
        enter(waiting, {nodes_[node.left + 1].front, node.left + 1}, point);
        continue;
      }
      for (std::size_t at = node.begin; at < node.end; ++at) {
        if (holds(rects_[order_[at]], point)) push(waiting, {order_[at], kRect});
      }
    }
  }

 private:
  static constexpr std::size_t kRect = static_cast<std::size_t>(-1);

  // Some neighbouring rectangles: order_[begin, end), or the two nodes from `left` on.
  struct Node {
    CGRect around;
    std::size_t front = 0;  // the position of the foremost one
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t left = 0;
  };
  // A node, or a rectangle (kRect), and what is foremost in it.
  struct Reach {
    std::size_t front;
    std::size_t node;
    bool operator<(const Reach& other) const { return front < other.front; }
  };

  static bool holds(const CGRect& rect, CGPoint point) {
    return point.x >= rect.minX() && point.x <= rect.maxX() && point.y >= rect.minY() &&
           point.y <= rect.maxY();
  }
  static void push(std::vector<Reach>& waiting, Reach reach);
  static Reach takeFront(std::vector<Reach>& waiting);
  void enter(std::vector<Reach>& waiting, Reach reach, CGPoint point) const {
    if (holds(nodes_[reach.node].around, point)) push(waiting, reach);
  }
  void split(std::size_t node);
  Node around(std::size_t begin, std::size_t end) const;

  std::vector<CGRect> rects_;
  std::vector<std::size_t> order_;
  std::vector<Node> nodes_;
};

}  // namespace tarni::platform

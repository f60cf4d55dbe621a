#include "platform/QuartzCore/RectIndex.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarni::platform {
namespace {

// So few are quicker to go through than to divide.
constexpr std::size_t kFew = 8;

}  // namespace

RectIndex::RectIndex(std::vector<CGRect> rects) : rects_(std::move(rects)) {
  for (std::size_t position = 0; position < rects_.size(); ++position) {
    if (holds(rects_[position], rects_[position].origin)) order_.push_back(position);
  }
  if (order_.empty()) return;
  nodes_.push_back(around(0, order_.size()));
  // Nodes that a split adds are split in their turn.
  for (std::size_t node = 0; node < nodes_.size(); ++node) split(node);
}

// Halves the node across its longer side.
void RectIndex::split(std::size_t node) {
  const Node whole = nodes_[node];
  if (whole.end - whole.begin <= kFew) return;
  const auto place = [this, isWide = whole.around.size.width > whole.around.size.height](
                         std::size_t at) { return isWide ? rects_[at].midX() : rects_[at].midY(); };
  const std::size_t middle = whole.begin + (whole.end - whole.begin) / 2;
  const auto at = [this](std::size_t index) {
    return order_.begin() + static_cast<std::ptrdiff_t>(index);
  };
  std::nth_element(at(whole.begin), at(middle), at(whole.end),
                   [&](std::size_t a, std::size_t b) { return place(a) < place(b); });
  nodes_[node].left = nodes_.size();
  nodes_.push_back(around(whole.begin, middle));
  nodes_.push_back(around(middle, whole.end));
}

RectIndex::Node RectIndex::around(std::size_t begin, std::size_t end) const {
  const CGRect& first = rects_[order_[begin]];
  double left = first.minX();
  double top = first.minY();
  double right = first.maxX();
  double bottom = first.maxY();
  Node node;
  node.begin = begin;
  node.end = end;
  for (std::size_t at = begin; at < end; ++at) {
    const CGRect& rect = rects_[order_[at]];
    left = std::min(left, rect.minX());
    top = std::min(top, rect.minY());
    right = std::max(right, rect.maxX());
    bottom = std::max(bottom, rect.maxY());
    node.front = std::max(node.front, order_[at]);
  }
  // A hair wider: what was rounded away must not part a rectangle from the node that it is in.
  const double hair = 1e-6 * (1 + std::abs(right - left) + std::abs(bottom - top));
  node.around = {{left - hair, top - hair}, {right - left + 2 * hair, bottom - top + 2 * hair}};
  return node;
}

void RectIndex::push(std::vector<Reach>& waiting, Reach reach) {
  waiting.push_back(reach);
  std::push_heap(waiting.begin(), waiting.end());
}

RectIndex::Reach RectIndex::takeFront(std::vector<Reach>& waiting) {
  std::pop_heap(waiting.begin(), waiting.end());
  const Reach front = waiting.back();
  waiting.pop_back();
  return front;
}

}  // namespace tarni::platform

// RecorderQueue: finished steps on their way to the sender, first in, first out. Any thread; each
// operation is atomic. The sender empties it once a second whether a host tool listens or not, so
// it stays short.
#pragma once

#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <vector>

namespace tarni {

class RecorderQueue {
 public:
  static RecorderQueue& get();

  RecorderQueue();
  ~RecorderQueue();
  RecorderQueue(const RecorderQueue&) = delete;
  RecorderQueue& operator=(const RecorderQueue&) = delete;

  // An item is a JSON array of recorded steps or of spied elements.
  void enqueue(nlohmann::ordered_json item);
  // The head, or null when the queue is empty.
  std::optional<nlohmann::ordered_json> dequeue();
  std::size_t getLength() const;
  void clearRecorderQueue();

  // Kept for callers from outside.
  std::vector<nlohmann::ordered_json> innerItems() const;
  void setInnerItems(std::vector<nlohmann::ordered_json> items);

 private:
  struct Items;
  std::unique_ptr<Items> items_;
};

}  // namespace tarni

// ScriptedAgent: a tiny server on one port of the loopback that plays one connection by a script,
// so that tests decide every byte and every pause. Its thread ends with it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <thread>

namespace tarni::test {

class ScriptedAgent {
 public:
  // The served side of one connection.
  class Peer {
   public:
    explicit Peer(int descriptor) : descriptor_(descriptor) {}
    // False when the client has gone.
    bool send(const std::string& bytes) const;
    void sendFramed(const std::string& payload) const { send(framed(payload)); }
    // The next line without its end; empty when the client has left.
    std::string readLine();

   private:
    int descriptor_;
    std::string pending_;
  };
  using Script = std::function<void(Peer&)>;

  // Listens at once; `connections` clients are served one after the other, each by the script. As
  // the agent's, the port stops listening once the last of them is connected.
  ScriptedAgent(std::uint16_t port, Script script, int connections = 1);
  ScriptedAgent(const ScriptedAgent&) = delete;
  ScriptedAgent& operator=(const ScriptedAgent&) = delete;
  ~ScriptedAgent();

  static std::string framed(const std::string& payload);

 private:
  void serve(int connections) const;

  Script script_;
  int listener_ = -1;
  std::thread thread_;
};

// Answers every line by `answer`, until the client leaves.
ScriptedAgent::Script answering(std::function<std::string(const std::string& line)> answer);

}  // namespace tarni::test

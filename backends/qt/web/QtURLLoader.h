// QtURLLoader: reads texts from addresses (file, http, https) with the toolkit's own network
// library, which comes with the web engine. The program goes on meanwhile. A server that has kept
// silent is left alone for a while: whoever asks it for seven files waits once. Main thread.
#pragma once

#include <QtCore/QDeadlineTimer>
#include <QtCore/QString>

#include "platform/Foundation/NSURLLoader.h"

namespace tarni::qt {

class QtURLLoader : public platform::NSURLLoader {
 public:
  platform::Task<std::optional<std::string>> stringWithContentsOfURL(std::string url) override;

 private:
  QString silentServer_;
  QDeadlineTimer rest_;
};

}  // namespace tarni::qt

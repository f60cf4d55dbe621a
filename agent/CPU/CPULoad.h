// CPULoad: how busy one core was between two samples. All values are percentages.
#pragma once

namespace tarni {

struct CPULoad {
  double system = 0;
  double user = 0;
  double nice = 0;
  // Of the time that was not spent on niced processes.
  double systemWithoutNice = 0;
  double userWithoutNice = 0;
  double total = 0;
};

}  // namespace tarni

// The agent's entry: what the class-load hooks of a platform's runtime do where there is one.
#pragma once

namespace tarni {

// Starts the agent: runs the load hooks, each with the class that it hooks. Called once, on the
// main thread, when the platform is installed and the application's classes exist. The agent then
// lives as long as the process.
void loadAgent();

// The process-exit handler. Nothing is torn down, since the agent's threads may still run; only the
// session channel's socket goes.
void destroy_recorder();

}  // namespace tarni

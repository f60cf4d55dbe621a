// Keys: what WebDriver's texts mean for a keyboard: characters, and keys in the private area of
// Unicode. Plain values, any thread.
#pragma once

#include <string>
#include <string_view>

#include "host/guard/Json.h"

namespace tarni::host::webdriver {

class Session;

// As `input.keys` calls the key of a character: "Enter", "a". "" for the one that lets go of all.
std::string keyNamed(const std::string& character);
bool isModifier(const std::string& key);

// The steps of `input.keys` that type the text. Modifiers stay down until its end, or until the
// character that lets go of them.
Json stepsTyping(std::string_view text);

// Types it into what has the keyboard.
void typeText(Session& session, std::string_view text);

}  // namespace tarni::host::webdriver

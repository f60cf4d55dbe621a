#include "host/cli/Reference.h"

#include <CLI/CLI.hpp>
#include <sstream>
#include <vector>

#include "host/guard/Words.h"

namespace tarni::host {

namespace {

using Options = std::vector<const CLI::Option*>;
using Commands = std::vector<const CLI::App*>;

// Those that `--help` shows.
Options optionsOf(const CLI::App& app) {
  return app.get_options([](const CLI::Option* option) { return !option->get_group().empty(); });
}

Commands commandsOf(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

// The text without anything that man(7) would take for its own.
std::string escaped(const std::string& text) {
  std::string result;
  bool startsLine = true;
  for (const char letter : text) {
    if (startsLine && (letter == '.' || letter == '\'')) result += "\\&";
    if (letter == '\\') {
      result += "\\e";
    } else if (letter == '-') {
      result += "\\-";
    } else {
      result += letter;
    }
    startsLine = letter == '\n';
  }
  return result;
}

std::string strong(const std::string& text) {
  return "\\fB" + escaped(text) + "\\fR";
}

// Lines as they stand; an empty one begins a paragraph.
void writeText(std::ostream& page, const std::string& text) {
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    page << (line.empty() ? ".PP" : escaped(line)) << '\n';
  }
}

std::string nameOf(const CLI::Option& option) {
  if (option.get_positional()) return "\\fI" + escaped(option.get_name()) + "\\fR";
  std::string name;
  for (const std::string& letter : option.get_snames()) {
    addWord(name, strong("-" + letter));
  }
  for (const std::string& word : option.get_lnames()) {
    addWord(name, strong("--" + word));
  }
  const bool takesValue = option.get_type_size() != 0;
  return takesValue ? name + " \\fI" + escaped(option.get_type_name()) + "\\fR" : name;
}

void writeOptions(std::ostream& page, const CLI::App& app) {
  for (const CLI::Option* option : optionsOf(app)) {
    page << ".TP\n" << nameOf(*option) << '\n';
    writeText(page, option->get_description());
  }
}

std::string wordsOf(const CLI::App& app) {
  std::string words;
  for (const CLI::App* command : commandsOf(app)) words += command->get_name() + ' ';
  for (const CLI::Option* option : optionsOf(app)) {
    for (const std::string& word : option->get_lnames()) words += "--" + word + ' ';
  }
  if (!words.empty()) words.pop_back();
  return words;
}

}  // namespace

std::string manualPage(const CLI::App& app) {
  std::ostringstream page;
  const std::string& name = app.get_name();
  page << ".TH TARNI 1\n.SH NAME\n" << name << " \\- record and play back programs\n";
  page << ".SH SYNOPSIS\n" << strong(name) << " [\\fIoptions\\fR] \\fIcommand\\fR …\n";
  page << ".SH DESCRIPTION\n";
  writeText(page, app.get_description());
  page << ".SH OPTIONS\n";
  writeOptions(page, app);
  page << ".SH COMMANDS\n";
  for (const CLI::App* command : commandsOf(app)) {
    page << ".SS " << name << ' ' << command->get_name() << '\n';
    writeText(page, command->get_description() + ".");
    writeOptions(page, *command);
  }
  page << ".SH NOTES\n";
  writeText(page, app.get_footer());
  return page.str();
}

std::string bashCompletion(const CLI::App& app) {
  std::ostringstream cases;
  for (const CLI::App* command : commandsOf(app)) {
    cases << "    " << command->get_name() << ") words=\"" << wordsOf(*command) << "\" ;;\n";
  }
  std::ostringstream names;
  for (const CLI::App* command : commandsOf(app)) {
    names << (names.tellp() > 0 ? "|" : "") << command->get_name();
  }
  return "# bash completion for tarni\n"
         "_tarni() {\n"
         "  local word=${COMP_WORDS[COMP_CWORD]} command= words= i\n"
         "  for ((i = 1; i < COMP_CWORD; i++)); do\n"
         "    case ${COMP_WORDS[i]} in\n"
         "      " +
         names.str() +
         ") command=${COMP_WORDS[i]}; break ;;\n"
         "    esac\n"
         "  done\n"
         "  case $command in\n"
         "    '') words=\"" +
         wordsOf(app) + "\" ;;\n" + cases.str() +
         "  esac\n"
         "  COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n"
         "  [[ $command != run || $word == -* ]] || COMPREPLY+=($(compgen -c -- \"$word\"))\n"
         "}\n"
         "complete -o default -F _tarni tarni\n";
}

}  // namespace tarni::host

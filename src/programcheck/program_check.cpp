#include "programcheck/program_check.h"

#include <algorithm>
#include <map>

#include "programcheck/blocks.h"
#include "programcheck/statement.h"
#include "programcheck/system_names.h"
#include "programcheck/words.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// The first use of a name.
struct Mention {
  int line;
  std::string_view name;
};
using Mentions = std::map<std::string, Mention>;  // by the name in upper case

class Checker {
 public:
  std::vector<ProgramFinding> Check(std::string_view program) {
    while (!program.empty()) program.remove_prefix(takeLine(program));
    blocks_.End(std::max(line_, 1));
    const auto missing = [this](const Mentions& used, const Mentions& declared, auto&& text) {
      for (const auto& [upper, mention] : used) {
        if (declared.contains(upper)) continue;
        report(ProgramFault::kUndeclared, mention, text(std::string(mention.name)));
      }
    };
    std::erase_if(values_, [](const auto& used) { return IsLanguageWord(used.first); });
    std::erase_if(fieldsOf_, [](const auto& used) { return IsLoggerTable(used.first); });
    missing(values_, variables_, [](const auto& name) { return name + " is not declared"; });
    missing(calledTables_, tables_, [](const auto& name) { return "no table is named " + name; });
    missing(fieldsOf_, tables_, [](const auto& name) { return "no table is named " + name; });
    missing(calledSubs_, subs_, [](const auto& name) { return "no Sub is named " + name; });
    std::stable_sort(findings_.begin(), findings_.end(),
                     [](const auto& left, const auto& right) { return left.line < right.line; });
    return std::move(findings_);
  }

 private:
  void report(ProgramFault fault, const Mention& at, std::string text) {
    findings_.push_back({fault, at.line, std::string(at.name), std::move(text)});
  }
  void reportLine(std::string text) { report(ProgramFault::kLine, {line_, ""}, std::move(text)); }

  // Checks the first line of `rest` and returns its length, the line end included.
  std::size_t takeLine(std::string_view rest) {
    ++line_;
    const std::size_t end = rest.find('\n');
    const std::size_t length = end == std::string_view::npos ? rest.size() : end + 1;
    std::string_view line = rest.substr(0, length);
    if (line.ends_with("\r\n")) {
      line.remove_suffix(2);
    } else {
      reportLine("the line does not end in CR LF");
      if (line.ends_with('\n')) line.remove_suffix(1);
    }
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7F; };
    if (std::any_of(line.begin(), line.end(), isControl)) {
      reportLine("the line contains a control character");
    }
    const std::vector<Token> all = TokensOf(line);
    Tokens tokens = all;
    // Units are free text.
    if (!all.empty() && all[0].Is("UNITS")) tokens = tokens.first(FindToken(all, "="));
    checkPairs(tokens);
    for (const Tokens statement : StatementsOf(tokens)) take(statement);
    return length;
  }

  // Quotes and parentheses that are opened in a line must be closed in it.
  void checkPairs(Tokens tokens) {
    int depth = 0;
    bool crossed = false;
    for (const Token& token : tokens) {
      if (token.Is("(")) ++depth;
      if (token.Is(")") && --depth < 0) crossed = true;
      const bool text = token.kind == Token::Kind::kText;
      if (text && (token.text.size() < 2 || !token.text.ends_with('"'))) {
        reportLine("a text in double quotes is not closed");
      }
    }
    if (depth != 0 || crossed) reportLine("the parentheses do not match");
  }

  void declare(Mentions& names, const Token& token) {
    const auto [earlier, added] = names.emplace(token.upper, Mention{line_, token.text});
    if (added) return;
    report(ProgramFault::kDeclaredTwice, {line_, token.text},
           std::string(token.text) + " is declared a second time");
  }

  void mention(Mentions& names, const Token& token) {
    names.emplace(token.upper, Mention{line_, token.text});
  }

  // Notes the names in an expression or an instruction.
  void use(Tokens tokens) {
    for (std::size_t i = 0; i < tokens.size(); ++i) {
      if (!tokens[i].IsName()) continue;
      const auto next = [&](std::size_t ahead, std::string_view sign) {
        return i + ahead < tokens.size() && tokens[i + ahead].Is(sign);
      };
      if (next(1, ".")) {  // a field of a table
        mention(fieldsOf_, tokens[i]);
        i += 2;
      } else if (tokens[i].Is("FILEMARK")) {
        useNamed(calledTables_, tokens.subspan(i + 1), "FileMark");
        return;
      } else if (!IsSystemUse(tokens[i], statement_)) {
        mention(values_, tokens[i]);
      }
    }
  }

  // Notes the name after CallTable, Call and the like, with or without parentheses.
  void useNamed(Mentions& names, Tokens rest, std::string_view word) {
    if (!rest.empty() && rest[0].Is("(")) rest = rest.subspan(1);
    if (rest.empty() || !rest[0].IsName()) return reportLine(std::string(word) + " without a name");
    mention(names, rest[0]);
    use(rest.subspan(1));
  }

  // Declares the name at the start; returns the rest.
  Tokens declareFirst(Mentions& names, Tokens rest, std::string_view word) {
    if (!rest.empty() && rest[0].IsName()) {
      declare(names, rest[0]);
      return rest.subspan(1);
    }
    reportLine(std::string(word) + " without a name");
    return rest;
  }

  // Dim and Public: names with their sizes, separated by commas.
  void takeVariables(Tokens rest, std::string_view word) {
    do {
      rest = declareFirst(variables_, rest, word);
      int depth = 0;
      std::size_t end = 0;
      for (; end < rest.size() && !(depth == 0 && rest[end].Is(",")); ++end) {
        depth += rest[end].Is("(") ? 1 : rest[end].Is(")") ? -1 : 0;
      }
      use(rest.first(std::min(end, FindToken(rest, "AS"))));
      rest = rest.subspan(std::min(rest.size(), end));
      if (rest.empty()) return;
      rest = rest.subspan(1);
    } while (true);
  }

  // Alias array(subscript) = name.
  void takeAlias(Tokens rest) {
    const std::size_t equals = FindToken(rest, "=");
    use(rest.first(equals));
    const Tokens alias = rest.subspan(std::min(rest.size(), equals + 1));
    if (alias.size() <= 1) {
      declareFirst(variables_, alias, "Alias");
      return;
    }
    if (IsScalingAlias(rest)) return;
    report(ProgramFault::kLine, {line_, alias[0].text},
           "the alias " + std::string(alias[0].text) + " is not a plain name");
  }

  void takeIf(Tokens rest, bool branch) {
    const std::size_t then = FindToken(rest, "THEN");
    use(rest.first(then));
    if (then == rest.size()) reportLine("If without Then");
    const Tokens afterThen = rest.subspan(std::min(rest.size(), then + 1));
    if (branch) {
      blocks_.Branch(line_, "ElseIf", false);
      take(afterThen);
    } else if (afterThen.empty()) {
      blocks_.Open(Block::kIf, line_);
    } else {  // a whole If in one line
      const std::size_t otherwise = FindToken(afterThen, "ELSE");
      take(afterThen.first(otherwise));
      take(afterThen.subspan(std::min(afterThen.size(), otherwise + 1)));
    }
  }

  void takeFor(Tokens rest) {
    use(rest);
    const bool named = !rest.empty() && rest[0].IsName();
    if (!named) reportLine("For without a name");
    blocks_.Open(Block::kFor, line_, named ? rest[0].text : std::string_view{});
  }

  void takeNext(Tokens rest) {
    if (!rest.empty() && rest[0].Is("SCAN")) return blocks_.Close(Block::kScan, line_);
    blocks_.CloseFor(line_, rest.empty() ? std::string_view{} : rest[0].text);
  }

  void takeTable(Tokens rest) {
    blocks_.Open(Block::kTable, line_);
    const bool opened = !rest.empty() && rest[0].Is("(");
    use(declareFirst(tables_, opened ? rest.subspan(1) : rest, "DataTable"));
  }

  // A declaration, in the program's head or in a subroutine; false for any other statement.
  bool takeDeclaration(const Token& first, Tokens rest) {
    if (first.Is("CONST")) {
      use(declareFirst(variables_, rest, "Const"));
    } else if (first.Is("DIM") || first.Is("PUBLIC")) {
      takeVariables(rest, first.text);
    } else if (first.Is("ALIAS")) {
      takeAlias(rest);
    } else if (first.Is("UNITS")) {
      use(rest);
    } else if (first.Is("DATATABLE")) {
      takeTable(rest);
    } else if (first.Is("SUB")) {
      blocks_.Open(Block::kSub, line_);
      use(declareFirst(subs_, rest, "Sub"));
    } else {
      return false;
    }
    return true;
  }

  void take(Tokens statement) {
    if (statement.empty()) return;
    statement_ = statement;
    const Token& first = statement[0];
    const Tokens rest = statement.subspan(1);
    const auto closes = [&](std::string_view joined, std::string_view second) {
      return first.Is(joined) || (first.Is("END") && !rest.empty() && rest[0].Is(second));
    };
    if (takeDeclaration(first, rest)) return;
    if (first.Is("ENDTABLE")) return blocks_.Close(Block::kTable, line_);
    if (closes("ENDSUB", "SUB")) return blocks_.Close(Block::kSub, line_);
    if (first.Is("BEGINPROG")) return blocks_.Open(Block::kProgram, line_);
    if (first.Is("ENDPROG")) return blocks_.Close(Block::kProgram, line_);
    if (first.Is("SCAN")) {
      blocks_.Open(Block::kScan, line_);
      return use(rest);
    }
    if (first.Is("NEXTSCAN")) return blocks_.Close(Block::kScan, line_);
    if (first.Is("FOR")) return takeFor(rest);
    if (first.Is("NEXT")) return takeNext(rest);
    if (first.Is("DO")) {
      blocks_.Open(Block::kDo, line_);
      return use(rest);
    }
    if (first.Is("LOOP")) {
      blocks_.Close(Block::kDo, line_);
      return use(rest);
    }
    if (first.Is("IF") || first.Is("ELSEIF")) return takeIf(rest, first.Is("ELSEIF"));
    if (first.Is("ELSE")) return blocks_.Branch(line_, "Else", true);
    if (closes("ENDIF", "IF")) return blocks_.Close(Block::kIf, line_);
    if (first.Is("CALLTABLE")) return useNamed(calledTables_, rest, "CallTable");
    if (first.Is("CALL")) return useNamed(calledSubs_, rest, "Call");
    use(statement);
  }

  int line_ = 0;
  Tokens statement_;  // that is being taken
  std::vector<ProgramFinding> findings_;
  Blocks blocks_{[this](int line, std::string text) {
    report(ProgramFault::kBlock, {line, ""}, std::move(text));
  }};
  Mentions variables_, tables_, subs_;                      // declared
  Mentions values_, calledTables_, fieldsOf_, calledSubs_;  // used
};

}  // namespace

std::vector<ProgramFinding> CheckProgram(std::string_view program) {
  return Checker().Check(program);
}

}  // namespace ostrand

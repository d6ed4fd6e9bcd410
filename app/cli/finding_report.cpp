#include "finding_report.h"

#include <algorithm>
#include <array>

#include "json_documents.h"
#include "lint/key_lines.h"
#include "model/defaults.h"
#include "places/key_places.h"
#include "platform/posix/terminal_forms.h"
#include "text/codepage.h"
#include "text/json.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::cli {
namespace {

constexpr std::array kSeverities = {Severity::kError, Severity::kWarning, Severity::kNotice};

bool isInProject(const LintFinding& finding) { return !finding.section.empty(); }

int lineOf(const KeyLines& lines, const LintFinding& finding) {
  return finding.line > 0 ? finding.line : lines.LineOf(finding.section, finding.key);
}

std::string painted(Severity severity) {
  constexpr std::array kPaints = {Paint::kRed, Paint::kYellow, Paint::kCyan};
  return Painted(kPaints[static_cast<std::size_t>(severity)], SeverityName(severity));
}

std::string message(const LintFinding& finding) { return Utf8FromWindows1252(OneLine(finding)); }

std::string withoutLineEnd(std::string text) {
  while (text.ends_with('\n')) text.pop_back();
  return text;
}

void putFinding(JsonWriter& json, const LintFinding& finding, int line) {
  json.BeginObject();
  json.Key("code").Text(finding.code).Key("severity").Text(SeverityName(finding.severity));
  json.Key("line").Number(line).Key("message").Text(message(finding));
  json.Key("title").Text(finding.title).Key("text").Text(Utf8FromWindows1252(finding.text));
  json.Key("section").Text(finding.section).Key("key").Text(Utf8FromWindows1252(finding.key));
  if (isInProject(finding)) {
    const KeyPlace place = PlaceOfKey(finding.section, finding.key);
    json.Key("place").Text(Utf8FromWindows1252(place.place));
    if (!place.screen.steps.empty()) {
      json.Key("screen").Text(place.screen.steps.back().screen);
      json.Key("control").Text(place.screen.control);
    }
  }
  if (finding.programLine > 0) json.Key("programLine").Number(finding.programLine);
  json.Key("againstSaving").Bool(finding.againstSaving);
  json.End();
}

// A path as the reference of a file: all but letters, digits and a few signs as "%20".
std::string uriOf(std::string_view path) {
  constexpr std::string_view kPlain = "-._~/";
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string uri;
  for (const char letter : path) {
    const auto byte = static_cast<unsigned char>(letter);
    const bool isPlain = (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
                         (letter >= '0' && letter <= '9') || Holds(kPlain, {&letter, 1});
    if (isPlain) {
      uri += letter;
    } else {
      uri.append("%").append(1, kDigits[byte / 16]).append(1, kDigits[byte % 16]);
    }
  }
  return uri;
}

}  // namespace

void Select(LintFindings& findings, const CommandLine& line) {
  for (LintFinding& finding : findings) {
    if (line.warningsAsErrors && finding.severity == Severity::kWarning) {
      finding.severity = Severity::kError;
    }
  }
  std::erase_if(findings,
                [&](const LintFinding& finding) { return finding.severity > line.severity; });
}

bool HasErrors(const LintFindings& findings) {
  return std::any_of(findings.begin(), findings.end(), [](const LintFinding& finding) {
    return finding.severity == Severity::kError;
  });
}

std::string CountText(const LintFindings& findings) {
  std::string text;
  for (const Severity severity : kSeverities) {
    const auto count = std::count_if(
        findings.begin(), findings.end(),
        [severity](const LintFinding& finding) { return finding.severity == severity; });
    if (count == 0) continue;
    if (!text.empty()) text += ", ";
    text += NumberText(static_cast<int>(count)) + " " + std::string(SeverityName(severity));
    if (count > 1) text += "s";
  }
  return text;
}

std::string FindingsText(const FileFindings& found) {
  const KeyLines lines(found.bytes);
  const std::string name = platform::TerminalName(found.file);
  std::string text;
  for (const LintFinding& finding : found.findings) {
    std::string place = name;
    place.append(":").append(NumberText(lineOf(lines, finding))).append(": ");
    text += platform::TerminalText(place);
    text += painted(finding.severity);
    text +=
        platform::TerminalText(": " + message(finding) + " [" + std::string(finding.code) + "]\n");
  }
  return text;
}

std::string FindingsJson(const FileFindings& found) {
  const KeyLines lines(found.bytes);
  JsonWriter json;
  json.BeginObject().Key("file").Text(platform::Utf8Text(found.file));
  json.Key("opened").Bool(found.opened).Key("findings").BeginArray();
  for (const LintFinding& finding : found.findings) {
    putFinding(json, finding, lineOf(lines, finding));
  }
  json.End().End();
  return withoutLineEnd(json.Take());
}

std::vector<std::string> FindingsSarif(const FileFindings& found) {
  constexpr std::array<std::string_view, 3> kLevels = {"error", "warning", "note"};
  const KeyLines lines(found.bytes);
  std::vector<std::string> results;
  if (!found.opened) results.emplace_back();
  for (const LintFinding& finding : found.findings) {
    JsonWriter json;
    json.BeginObject().Key("ruleId").Text(finding.code);
    json.Key("level").Text(kLevels[static_cast<std::size_t>(finding.severity)]);
    json.Key("message").BeginObject().Key("text").Text(message(finding)).End();
    json.Key("locations").BeginArray().BeginObject().Key("physicalLocation").BeginObject();
    json.Key("artifactLocation").BeginObject().Key("uri").Text(uriOf(found.file)).End();
    json.Key("region").BeginObject().Key("startLine").Number(lineOf(lines, finding)).End();
    json.End().End().End();
    if (isInProject(finding)) {
      json.Key("properties").BeginObject().Key("section").Text(finding.section);
      json.Key("key").Text(Utf8FromWindows1252(finding.key)).End();
    }
    results.push_back(withoutLineEnd(json.End().Take()));
  }
  return results;
}

std::string SarifReport(std::vector<std::string> results) {
  const bool successful = std::erase(results, "") == 0;
  JsonWriter rules;
  rules.BeginArray();
  for (const CodeRow& row : FindingCodes()) {
    rules.BeginObject(JsonWriter::Layout::kOneLine).Key("id").Text(row.code);
    rules.Key("shortDescription").BeginObject().Key("text").Text(row.summary).End().End();
  }
  rules.End();
  std::string text =
      "{\"$schema\": \"https://json.schemastore.org/sarif-2.1.0.json\",\n\"version\": \"2.1.0\",\n"
      "\"runs\": [{\"tool\": {\"driver\": {\"name\": \"ostrand\", \"version\": ";
  text +=
      JsonString(ORVUS_COMMON::kModuleVersion) + ",\n\"rules\": " + withoutLineEnd(rules.Take());
  text += "}},\n\"invocations\": [{\"executionSuccessful\": ";
  text += std::string(successful ? "true" : "false") + "}],\n\"results\": " + JsonArray(results);
  return withoutLineEnd(text) + "}]}\n";
}

}  // namespace ostrand::cli

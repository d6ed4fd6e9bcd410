# The checks of source_map_test.sh. Reads the page, then the sources, then outputs and projects.
#
# A row is true if its routine is defined in its source, and each text is in that routine, in the
# same source outside of any routine (a table, a constant), or in the source that the row names for
# it.

# The codes of findings, which name the titles of their boxes.
FILENAME == "src/lint/codes.cpp" { nextfile }

function fail(text) {
  if (!((text) in failed)) print "FAILED: " text
  failed[text] = 1
  ++failures
}

# The form in which titles are compared: without outer blanks and a number at the end.
function plain(title) {
  sub(/^ +/, "", title)
  sub(/[ 0-9]+$/, "", title)
  return title
}

function pathOf(source) { return source ~ /^app\// ? source : "src/" source }

# Splits `cell` into the texts between its backquotes; returns their number.
function textsIn(cell, texts,   parts, count, n, i) {
  count = split(cell, parts, "`")
  for (i = 2; i < count; i += 2) texts[++n] = parts[i]
  return n + 0
}

# A shown text needs a row; a text of a source needs a row that names the source.
function need(text, place) {
  if (!((text) in shown)) fail(place ": no row for \"" text "\"")
}
function needFrom(title, path) {
  title = plain(title)
  gsub(/\\"/, "\"", title)
  if (title ~ /[A-Za-z]/ && !((title, path) in from)) fail(path ": no row for \"" title "\"")
}

# The last text in double quotes of each match of `pattern` is a title.
function needTitles(path, code, pattern,   title) {
  while (match(code, pattern)) {
    title = substr(code, RSTART, RLENGTH)
    code = substr(code, RSTART + RLENGTH)
    match(title, /"([^"\\]|\\.)*"$/)
    needFrom(substr(title, RSTART + 1, RLENGTH - 2), path)
  }
}

BEGIN { text = "\"([^\"\\\\]|\\\\.)*\"" }

FNR == 1 {
  kind = FILENAME
  sub(/.*\./, "", kind)
  inMap = 0
  routine = pending = ""
}

{ sub(/\r$/, "") }

# The page.
kind == "md" && /^## / { inMap = $0 == "## From an output to its source" }
kind == "md" && inMap && split($0, cells, " [|] ") >= 3 && cells[2] ~ /\.(h|cpp)$/ {
  ++rows
  row[rows] = $0
  sub(/^[|] /, "", cells[1])
  sub(/ ?[|]?$/, "", cells[3])
  sub(/ ?[|]$/, "", cells[4])
  source[rows] = pathOf(cells[2])
  routineOf[rows] = cells[3]
  place[rows] = source[rows]
  if (match(cells[4], /(^| )in [a-z0-9_\/]+\.(h|cpp)$/)) {
    place[rows] = substr(cells[4], RSTART)
    sub(/^ ?in /, "", place[rows])
    place[rows] = pathOf(place[rows])
  }
  spelled[rows] = cells[4] ~ /`/ ? cells[4] : cells[1]
  n = textsIn(cells[1], texts)
  for (i = 1; i <= n; ++i) {
    shown[plain(texts[i])] = 1
    from[plain(texts[i]), source[rows]] = from[plain(texts[i]), place[rows]] = 1
    word = texts[i]
    sub(/[^A-Za-z0-9_].*/, "", word)
    statement[word] = 1
  }
}

# The sources, routine by routine. A routine begins on a line that is indented by 2 at most, and
# ends at the brace with the same indentation.
kind == "h" || kind == "cpp" {
  line = $0
  sub(/(^|[ \t])\/\/.*/, "", line)
  sub(/ +$/, "", line)
  if (routine == "" && pending == "" &&
      line ~ /^(  )?[A-Za-z\[~][A-Za-z0-9_:<>,&*. \[\]~]*[ :*&~][A-Za-z0-9_]+\(/ &&
      line !~ /^ *(return|else|case|throw|using|friend|namespace) /) {
    head = substr(line, 1, index(line, "(") - 1)
    indent = head ~ /^  / ? "  " : ""
    sub(/.*[^A-Za-z0-9_]/, "", head)
    pending = head
  }
  if (routine != "") {
    bodies[FILENAME, routine] = bodies[FILENAME, routine] "\n" line
    if (index(line, indent "}") == 1) routine = ""
  } else if (pending != "") {
    start = start "\n" line
    if (line ~ /;$/) {
      outside[FILENAME] = outside[FILENAME] start
      pending = start = ""
    } else if (line ~ /[{}]$/) {
      bodies[FILENAME, pending] = bodies[FILENAME, pending] start
      if (line ~ /\{$/) routine = pending
      pending = start = ""
    }
  } else {
    outside[FILENAME] = outside[FILENAME] "\n" line
  }
  whole[FILENAME] = whole[FILENAME] " " line
  if (line ~ /^class frm/) {
    sub(/^class /, "", line)
    sub(/[^A-Za-z0-9].*/, "", line)
    need(line, FILENAME)
  }
}

# Outputs and projects.
kind == "VKG" && /^\[/ { need($0, FILENAME) }
kind == "VKP" && /^ *'[-_'\\]+ .*[-_'\/]$/ && /[A-Za-z]/ {
  gsub(/^ *'[-_'\\]+|[-_'\/]+$/, "")
  need(plain($0), FILENAME)
  next
}
kind == "VKP" && !/^ *'/ && !/^ *[A-Za-z0-9_]+(\([^=]*\))? *=/ && /[A-Za-z]/ {
  sub(/^ +/, "")
  sub(/[^A-Za-z0-9_].*/, "")
  if (!($0 in statement)) fail(FILENAME ": no row for the statement " $0)
}
kind == "VKD" && /^--? [A-Z]/ {
  sub(/ ?-+$/, "")
  need(plain($0), FILENAME)
}
kind == "VKW" && / (-[0-9]-|Page Break) / {
  while (match($0, / (-[0-9]-|Page Break) /)) {
    need(substr($0, RSTART + 1, RLENGTH - 2), FILENAME)
    $0 = substr($0, RSTART + RLENGTH)
  }
}
kind == "summary" && /^ [A-Z][A-Z0-9\/ ]+ +(Reps|State)/ {
  sub(/ +(Reps|State).*/, "")
  need(plain($0), FILENAME)
}

END {
  for (r = 1; r <= rows; ++r) {
    if (!((source[r], routineOf[r]) in bodies)) {
      fail("no routine " routineOf[r] " in " source[r] ": " row[r])
      continue
    }
    code = bodies[source[r], routineOf[r]] outside[source[r]]
    if (place[r] != source[r]) code = whole[place[r]]
    n = textsIn(spelled[r], texts)
    for (i = 1; i <= n; ++i) {
      if (!index(code, texts[i])) {
        fail("\"" texts[i] "\" is not in " routineOf[r] ", " place[r] ": " row[r])
      }
    }
  }
  for (path in whole) {
    needTitles(path, whole[path], "[Tt]itle *= *" text)
    needTitles(path, whole[path], "(ShowWarning|Ask)\\([^\",;]*, *" text)
    needTitles(path, whole[path], "[pP]ut(Section|Bar)?Title\\([^\";]*" text)
    needTitles(path, whole[path], "\"[A-Z][A-Z0-9 \\/&-]* [A-Z0-9 \\/&-]*[A-Z0-9]( \\?)?\"")
  }
  if (rows == 0) fail("the page has no rows")
  if (failures > 0) print "Correct \"From an output to its source\" in docs/architecture.md."
  exit (failures > 0)
}

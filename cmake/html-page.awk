# SPDX-License-Identifier: Apache-2.0
# A page as Doxygen reads it. Pages and headings get names, which Doxygen has in common for all pages,
# so a heading has that of its page in front; links name them. The text of a link is in one line.
#
#   awk -v root=SOURCES -f html-page.awk PAGE
BEGIN {
    this = ARGV[1] == root "/README.md" ? "index" : name(ARGV[1])
}

/^ *```/ { code = !code }

code { print; next }

/^# / {
    print $0 (this == "index" ? "" : " {#" this "}")
    next
}

/^##+ / {
    title = $0
    sub(/^#+ /, "", title)
    title = tolower(title)
    gsub(/[^a-z0-9_ -]/, "", title)
    gsub(/ /, "-", title)
    if (seen[title]++)
        title = title "-" (seen[title] - 1)
    print $0 " {#" this "_" title "}"
    next
}

{
    rest = $0
    while (rest ~ /\[[^]`]*$/ && (getline more) > 0)
        rest = rest " " more
    gsub(/\[LICENSE\]\(LICENSE\)/, "LICENSE", rest) # no page
    line = ""
    while (match(rest, /\]\(([^)#:]*\.md)?(#[^)]*)?\)/)) {
        link = substr(rest, RSTART + 2, RLENGTH - 3)
        page = link
        sub(/#.*/, "", page)
        sub(/^[^#]*/, "", link)
        sub(/#/, "_", link)
        line = line substr(rest, 1, RSTART + 1) "@ref " (page == "" ? this : name(page)) link ")"
        rest = substr(rest, RSTART + RLENGTH)
    }
    print line rest
}

# The file's name without directory and suffix; of a README.md, that of its directory.
function name(path,  parts, count) {
    count = split(path, parts, "/")
    sub(/\.md$/, "", parts[count])
    if (parts[count] != "README")
        return parts[count]
    return parts[count - 1] == ".." ? "index" : parts[count - 1]
}

#!/usr/bin/env bash
# Prints one-line "deb-src" entries for the distribution's own package sources of this machine,
# read from its one-line lists and its deb822 files.
set -euo pipefail

codename=$(. /etc/os-release && echo "${VERSION_CODENAME:-stable}")

# Keeps what belongs to the distribution: suites CODENAME, CODENAME-updates, CODENAME-security.
only_own_suites() {
    awk -v code="$codename" '
        {
            for (i = 2; i <= NF; ++i) {
                if ($i == "stable" || $i ~ "^" code "(-updates|-security)?$") {
                    print
                    next
                }
            }
        }'
}

one_line_lists() {
    cat /etc/apt/sources.list /etc/apt/sources.list.d/*.list 2>/dev/null |
        sed -n 's/^deb[[:space:]]/deb-src /p' || true
}

# One stanza is turned into one line per address and suite.
deb822_files() {
    cat /etc/apt/sources.list.d/*.sources 2>/dev/null | awk '
        function flush_stanza(    i, j, n, m, u, s, option) {
            if (types ~ /(^| )deb( |$)/ && disabled !~ /no/) {
                n = split(uris, u, " ")
                m = split(suites, s, " ")
                option = signed == "" ? "" : "[signed-by=" signed "] "
                for (i = 1; i <= n; ++i)
                    for (j = 1; j <= m; ++j)
                        print "deb-src " option u[i] " " s[j] " " components
            }
            types = uris = suites = components = signed = disabled = ""
        }
        /^#/ { next }
        /^[[:space:]]*$/ { flush_stanza(); next }
        {
            key = tolower($1)
            $1 = ""
            sub(/^ /, "")
            if (key == "types:") {
                flush_stanza()
                types = $0
            }
            if (key == "uris:") uris = $0
            if (key == "suites:") suites = $0
            if (key == "components:") components = $0
            if (key == "signed-by:") signed = $0
            if (key == "enabled:") disabled = $0
        }
        END { flush_stanza() }' || true
}

{ one_line_lists; deb822_files; } | only_own_suites | sort -u

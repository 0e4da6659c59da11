# Input filter of Doxygen. In the headers a comment speaks for the declaration below it and, where they follow directly,
# for its setter and its overloads; Doxygen ties it to the first declaration only. This repeats it, keeping line
# numbers. It also sets the opening of a group apart from the comment of the group's first member.
/^ *\/\/\/ @{$/ {
    sub(/\/\/\/ @{/, "/** @{ */")
    inComment = 0
    print
    next
}
/^ *\/\/\// {
    comment = (inComment ? comment : "") substr($0, index($0, "///") + 3)
    inComment = 1
    print
    next
}
{
    name = match($0, /~?[A-Za-z_]+\(/) ? substr($0, RSTART, RLENGTH - 1) : ""
    if (inComment) {
        documented = comment ~ /@param/ ? "" : name
        setter = "set" toupper(substr(name, 1, 1)) substr(name, 2)
    } else if ($0 ~ /^ *$/) {
        documented = ""
    } else if (documented != "" && (name == documented || name == setter)) {
        match($0, /[^ ]/)
        $0 = substr($0, 1, RSTART - 1) "/** " (name == setter ? "Sets what the getter tells: " : "") comment " */ " \
            substr($0, RSTART)
    }
    inComment = 0
    print
}

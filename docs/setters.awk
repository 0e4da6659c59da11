# Input filter of Doxygen. In the headers the comment of a property stands above its getter and speaks for the setter
# below it as well; Doxygen ties it to the getter only. This repeats it for the setter, keeping line numbers.
/^ *\/\/\// {
    comment = (inComment ? comment : "") substr($0, index($0, "///") + 3)
    inComment = 1
    print
    next
}
{
    if (inComment && match($0, /[A-Za-z]+\(\) const/)) {
        getter = substr($0, RSTART, RLENGTH - length("() const"))
        setter = "set" toupper(substr(getter, 1, 1)) substr(getter, 2) "("
    } else if (inComment || $0 ~ /^ *$/) {
        setter = ""
    } else if (setter != "" && index($0, " " setter)) {
        match($0, /[^ ]/)
        $0 = substr($0, 1, RSTART - 1) "/** Sets what the getter tells:" comment " */ " substr($0, RSTART)
        setter = ""
    }
    inComment = 0
    print
}

// One small change to a line of C++: the kinds of faults that a test has to notice.

/** Changes one match of `pattern`, a global regular expression, at a time; `to` is a text or makes one of the match. */
const swap = (pattern, to) => (line) =>
    [...line.matchAll(pattern)].map((match) =>
        line.slice(0, match.index) + (typeof to === 'string' ? to : to(match[0])) + line.slice(match.index + match[0].length));

const OPERATORS = [
    swap(/ == /g, ' != '), swap(/ != /g, ' == '),
    swap(/ < /g, ' >= '), swap(/ > /g, ' <= '), swap(/ <= /g, ' > '), swap(/ >= /g, ' < '),
    swap(/ && /g, ' || '), swap(/ \|\| /g, ' && '),
    swap(/ \+ /g, ' - '), swap(/ - /g, ' + '), swap(/ \* (?=[\w(])/g, ' / '), swap(/ \/ /g, ' * '),
    swap(/ \+= /g, ' -= '), swap(/ -= /g, ' += '),
    swap(/std::min\(/g, 'std::max('), swap(/std::max\(/g, 'std::min('),
    swap(/\btrue\b/g, 'false'), swap(/\bfalse\b/g, 'true'),
    swap(/\bif \(!/g, 'if ('), swap(/\bif \((?!!|const |auto |std::exchange)/g, 'if (!'),
    swap(/\breturn !/g, 'return '), swap(/(?<=[ (,{])\d+(?:\.\d+)?(?=[),;} ])/g, (number) => `(${number} + 1)`),
    // A statement that is a call or an assignment and nothing else.
    (line) => (/^\s+(?!return|const|auto|static|using|throw|break|case|if|for|while|else|std::)[\w.:>*()\->]+(\(.*\)| [+\-]?= .*);$/.test(line)
        ? [line.replace(/\S.*$/, ';')] : []),
];

const NO_CODE = /^\s*(\/\/|#|namespace|using |template|static_assert|class |struct |enum |\}|$)/;

/** @returns {string[]} the line with one thing changed, in every way there is; none for lines without code. */
export function faultsOf(line) {
    if (NO_CODE.test(line) || /"/.test(line)) {
        return [];
    }
    const code = line.replace(/\/\/.*$/, '').trimEnd();
    return OPERATORS.flatMap((operator) => operator(code));
}

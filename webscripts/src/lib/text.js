// JSON text of texts, lists and plain objects, made without the page's JSON and without "toJSON".

const short = { '"': '\\"', '\\': '\\\\', '\n': '\\n', '\r': '\\r', '\t': '\\t' };
const special = /["\\\u0000-\u001f\u007f\u2028\u2029]|[\ud800-\udbff][\udc00-\udfff]|[\ud800-\udfff]/g;

function escaped(match) {
  if (match.length === 2) return match;
  const code = match.charCodeAt(0);
  // Half a surrogate pair is not a character.
  if (code >= 0xd800 && code <= 0xdfff) return '\ufffd';
  const digits = code.toString(16);
  return short[match] || `\\u${'0000'.slice(digits.length)}${digits}`;
}

export function toJson(value) {
  if (typeof value === 'string') return `"${value.replace(special, escaped)}"`;
  let text = '';
  if (Array.isArray(value)) {
    for (let i = 0; i < value.length; i += 1) text += (i ? ',' : '') + toJson(value[i]);
    return `[${text}]`;
  }
  for (const key in value) {
    if (!Object.prototype.hasOwnProperty.call(value, key)) continue;
    text += `${text && ','}${toJson(key)}:${toJson(value[key])}`;
  }
  return `{${text}}`;
}

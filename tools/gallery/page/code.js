"use strict";
// Source text as coloured lines. Nothing of a source is ever read as HTML.

const TYPES = /^(void|float|double|int|uint|bool|half|[biu]?vec[234]|mat[234](x[234])?|(float|int|uint|bool)[1-4](x[1-4])?|sampler2D|Texture2D(MS)?|SamplerState)$/;
const KEYWORDS = new Set(("if else for while do switch case default break continue return discard " +
  "const uniform in out inout struct static cbuffer register true false layout highp mediump " +
  "lowp precision attribute varying").split(" "));
const TOKEN = /(\/\/[^\n]*|\/\*[\s\S]*?(?:\*\/|$))|(^[ \t]*#[^\n]*)|((?:\d+\.?\d*|\.\d+)(?:[eE][+-]?\d+)?[fFuUlL]*)|([A-Za-z_]\w*)|\n/gm;

function tokenClass(match) {
  if (match[1] !== undefined) return "c";
  if (match[2] !== undefined) return "d";
  if (match[3] !== undefined) return "n";
  if (match[4] !== undefined) {
    return TYPES.test(match[4]) ? "t" : KEYWORDS.has(match[4]) ? "k" : "";
  }
  return "";
}

/** Fills `pre` with a source, a line each; a token over several lines is cut at their ends. */
function showSource(pre, text) {
  const fragment = document.createDocumentFragment();
  let line = document.createElement("span");
  line.className = "l";
  const add = (piece, kind) => {
    piece.split("\n").forEach((part, i) => {
      if (i > 0) {
        fragment.append(line);
        line = document.createElement("span");
        line.className = "l";
      }
      if (part === "") return;
      const node = document.createElement("span");
      node.className = kind;
      node.textContent = part;
      line.append(kind ? node : part);
    });
  };
  let end = 0;
  for (const match of text.matchAll(TOKEN)) {
    add(text.slice(end, match.index), "");
    add(match[0], tokenClass(match));
    end = match.index + match[0].length;
  }
  add(text.slice(end), "");
  fragment.append(line);
  pre.replaceChildren(fragment);
  pre.scrollTop = 0;
}

/** Scrolls to the first line that holds `word`, if any does. */
function scrollToWord(pre, word) {
  const line = [...pre.children].find((l) => l.textContent.includes(word));
  if (line) pre.scrollTop = line.offsetTop - pre.offsetTop - 8;
}

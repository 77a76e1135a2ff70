// The page of results: all entries of `searchIndex` that hold each word asked for, those first
// whose title begins with one. An entry is [title, address, text].
"use strict";

function SearchBox() {
  this.DOMSearchField = () => document.getElementById("MSearchField");
  this.OnSearchFieldFocus = isOn => isOn && this.DOMSearchField().select();
}

function rank(title, words) {
  const parts = title.toLowerCase().split(/[^a-z0-9_]+/);
  if (words.every(word => parts.includes(word))) return 0;
  if (words.some(word => parts.some(part => part.startsWith(word)))) return 1;
  return words.some(word => title.toLowerCase().includes(word)) ? 2 : 3;
}

function find(query) {
  const words = query.toLowerCase().split(/\s+/).filter(word => word);
  if (!words.length) return [];
  const holds = entry => {
    const all = (entry[0] + " " + entry[2]).toLowerCase();
    return words.every(word => all.includes(word));
  };
  const hits = searchIndex.filter(holds).map(entry => [rank(entry[0], words), entry]);
  return hits.sort((a, b) => a[0] - b[0]).map(hit => hit[1]);
}

// The text around the first word that was found, from one word's begin to another's end.
function excerpt(text, query) {
  const at = text.toLowerCase().indexOf(query.toLowerCase().split(/\s+/)[0]);
  const from = text.lastIndexOf(" ", Math.max(0, at - 60)) + 1;
  const shown = text.slice(from, from + 160);
  const isCut = from + shown.length < text.length;
  return (from > 0 ? "\u2026 " : "") + (isCut ? shown.replace(/\s\S*$/, " \u2026") : shown);
}

function show(query) {
  const hits = find(query);
  const results = $("#searchresults").empty();
  $("#MSearchBox input").val(query);
  $("<p>").text(hits.length + (hits.length === 1 ? " place" : " places")).appendTo(results);
  for (const [title, address, text] of hits.slice(0, 100)) {
    const link = $("<a>").attr("href", address).text(title);
    $("<p>").append(link, $("<br>"), $("<span>").text(excerpt(text, query))).appendTo(results);
  }
}

$(() => {
  const query = new URLSearchParams(location.search).get("query");
  if (query !== null && document.getElementById("searchresults")) show(query.trim());
});

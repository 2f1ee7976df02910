// Files that pages refer to: style, script, icon.
#include "host/pages/site_parts.h"

#include <algorithm>
#include <array>

namespace cmpihost::pages {

namespace {

constexpr std::string_view style = R"(:root { color-scheme: light dark; --ink: #1b1f24; --paper: #fff; --soft: #57606a;
  --line: #d0d7de; --band: #f3f5f8; --link: #0550ae; --fault: #a40e26; --box: #eaf2fb; }
@media (prefers-color-scheme: dark) {
  :root { --ink: #e6edf3; --paper: #0d1117; --soft: #a3adb8; --line: #3d444d; --band: #161b22; --link: #79b8ff;
    --fault: #ff9a9a; --box: #14263b; }
}
* { box-sizing: border-box; }
body { margin: 0; font: 16px/1.45 system-ui, sans-serif; color: var(--ink); background: var(--paper);
  overflow-wrap: anywhere; }
header { padding: .6rem 1rem; border-bottom: 1px solid var(--line); }
header a { display: inline-block; margin-right: 1rem; padding: .3rem 0; }
main { padding: 0 1rem 2rem; }
h1 { font-size: 1.4rem; margin: .8rem 0; }
h2 { font-size: 1.2rem; margin: 1.5rem 0 .5rem; }
h3 { font-size: 1rem; margin: 1rem 0 .3rem; }
a { color: var(--link); }
a:focus-visible, [tabindex]:focus-visible, button:focus-visible, input:focus-visible, summary:focus-visible {
  outline: 3px solid var(--link); outline-offset: 2px; }
.trail a { margin-right: .6rem; }
.path { color: var(--soft); }
.unit { color: var(--soft); font-weight: normal; font-size: .85em; }
.fault { color: var(--fault); }
.scrolled { overflow-x: auto; margin: .8rem 0; max-width: 100%; }
table { border-collapse: collapse; margin: .8rem 0; overflow-wrap: normal; }
caption { text-align: left; font-weight: bold; padding: .3rem 0; }
th, td { text-align: left; vertical-align: top; padding: .3rem .6rem; border-bottom: 1px solid var(--line); }
thead th { background: var(--band); white-space: nowrap; }
tbody th { font-weight: normal; }
th[scope=rowgroup] { color: var(--soft); padding-top: .9rem; }
td.number { text-align: right; font-variant-numeric: tabular-nums; white-space: nowrap; }
form { margin: .8rem 0; }
input, button { font: inherit; color: inherit; background: var(--paper); border: 1px solid var(--soft);
  border-radius: 4px; padding: .25rem .5rem; }
pre { overflow-x: auto; padding: .6rem; background: var(--band); border: 1px solid var(--line); border-radius: 4px; }
li { margin: .2rem 0; }
dt { font-weight: bold; } dd { margin: 0 0 .4rem 1rem; }
svg text { fill: var(--ink); font-size: 12px; }
svg text.class { fill: var(--soft); font-size: 11px; }
svg .box { fill: var(--box); stroke: var(--soft); }
svg a:hover .box, svg a:focus .box { stroke: var(--link); stroke-width: 3; }
svg .tie { fill: none; stroke: var(--soft); stroke-width: 1; }
[role=status] { position: sticky; top: 0; margin: 0; color: var(--fault); background: var(--paper); }
.rate { display: block; color: var(--soft); }
svg.curve { display: block; margin-left: auto; }
svg.curve polyline { fill: none; stroke: var(--link); stroke-width: 1.5; }
)";

constexpr std::string_view script =
    R"(// Refreshes an object's values, and shows how fast its counters go. All else is on the page without it.
'use strict';
(function () {
  var table = document.getElementById('properties');
  if (!table) return;
  var period = 2000, points = 60, seen = new Date(), svg = 'http://www.w3.org/2000/svg';
  var cells = Array.prototype.slice.call(table.querySelectorAll('td[data-counter], td[data-value]'));
  var rows = cells.map(function (cell) {
    var counter = cell.hasAttribute('data-counter');
    var row = { name: cell.getAttribute(counter ? 'data-counter' : 'data-value'), counter: counter, rates: [],
                text: document.createTextNode(cell.textContent) };
    cell.textContent = '';
    cell.appendChild(row.text);
    if (counter) {
      row.rate = document.createElement('span');
      row.rate.className = 'rate';
      cell.appendChild(row.rate);
    }
    if (cell.hasAttribute('data-curve')) {
      var curve = document.createElementNS(svg, 'svg');
      curve.setAttribute('class', 'curve');
      curve.setAttribute('width', '120');
      curve.setAttribute('height', '24');
      curve.setAttribute('aria-hidden', 'true');
      row.line = document.createElementNS(svg, 'polyline');
      curve.appendChild(row.line);
      cell.appendChild(curve);
    }
    return row;
  });
  var notice = document.createElement('p');
  notice.setAttribute('role', 'status');
  var box = table.parentNode;
  box.parentNode.insertBefore(notice, box);
  function tell(text) {
    if (text !== notice.textContent) notice.textContent = text;
  }
  function draw(row) {
    var most = Math.max.apply(null, row.rates.concat([1]));
    row.line.setAttribute('points', row.rates.map(function (rate, i) {
      return (i * 120 / (points - 1)).toFixed(1) + ',' + (23 - 22 * rate / most).toFixed(1);
    }).join(' '));
  }
  // What comes later is not measured against what was.
  function forget(row) {
    if (!row.counter) return;
    row.begin = undefined;
    row.rate.textContent = '';
    row.rates = [];
    if (row.line) draw(row);
  }
  function fail(status) {
    rows.forEach(forget);
    var values = 'values of ' + seen.toTimeString().slice(0, 8) + '.';
    tell(status === 404 ? 'This object is gone; ' + values : 'This object does not answer; ' + values);
  }
  function take(row, value, text, last, now) {
    if (text === undefined) text = value === undefined ? '' : String(value);
    if (text !== row.text.nodeValue) row.text.nodeValue = text;
    if (!row.counter) return;
    if (typeof value !== 'number') return forget(row);
    if (row.begin !== undefined && now > row.since) {
      var change = (value - row.begin) * 1000 / (now - row.since);
      row.rate.textContent = change < 0 ? 'began anew' : change.toFixed(1) + ' per second';
      row.rates.push(Math.max(0, (value - row.value) * 1000 / (now - last)));
      if (row.rates.length > points) row.rates.shift();
      if (row.line) draw(row);
      if (change < 0) row.begin = undefined;
    }
    if (row.begin === undefined) { row.begin = value; row.since = now; }
    row.value = value;
  }
  var last = 0;
  function refresh() {
    if (document.hidden) return setTimeout(refresh, period);
    var late = setTimeout(fail, 5 * period);
    // Not relative to the document, whose address may hold credentials.
    fetch(location.origin + location.pathname + '?format=json', { credentials: 'same-origin' })
      .then(function (reply) { return reply.ok ? reply.json() : Promise.reject(reply.status); })
      .then(function (object) {
        clearTimeout(late);
        seen = new Date();
        var now = seen.getTime();
        rows.forEach(function (row) { take(row, object.properties[row.name], object.texts[row.name], last, now); });
        last = now;
        tell('');
        setTimeout(refresh, period);
      }, function (status) {
        clearTimeout(late);
        fail(status);
        setTimeout(refresh, 5 * period);
      });
  }
  refresh();
})();
)";

constexpr std::string_view icon = R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 16 16">)"
                                  R"(<path fill="none" stroke="#0550ae" stroke-width="2" d="M4 4L12 12M12 4L4 12"/>)"
                                  R"(<g fill="#0550ae"><circle cx="4" cy="4" r="3"/><circle cx="12" cy="4" r="3"/>)"
                                  R"(<circle cx="4" cy="12" r="3"/><circle cx="12" cy="12" r="3"/></g></svg>)";

struct Asset {
    std::string_view name;
    std::string_view content_type;
    std::string_view text;
};

constexpr std::array assets{
    Asset{"style.css", "text/css; charset=utf-8", style},
    Asset{"live.js", "text/javascript; charset=utf-8", script},
    Asset{"icon.svg", "image/svg+xml", icon},
};

} // namespace

Page asset(const Visit& visit) {
    const auto* found =
        std::find_if(assets.begin(), assets.end(), [&visit](const Asset& each) { return each.name == visit.rest; });
    if (found == assets.end())
        return error_page(404, "Not found", "There is no file " + visit.rest + ".");
    return {200, std::string(found->content_type), std::string(found->text)};
}

} // namespace cmpihost::pages

// The page app of trellin serve. Every text from the server goes into the page as text
// (textContent, value, option text), never as markup.
"use strict";

const $ = (id) => document.getElementById(id);
const MONTHS = ["Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"];
const DOWNLOADS = [["pdf", "PDF"], ["xlsx", "Excel"], ["csv", "CSV"], ["html", "HTML"], ["text", "Text"]];

const state = { reports: [], key: null, report: null, fields: [], run: null, page: 1, poll: null };

function el(tag, props, ...children) {
  const node = document.createElement(tag);
  Object.assign(node, props || {});
  for (const child of children) node.append(child);
  return node;
}

async function api(path, body) {
  const options = body === undefined ? {} :
    { method: "POST", headers: { "Content-Type": "application/json" }, body: JSON.stringify(body) };
  const res = await fetch(path, options);
  let data = null;
  try { data = await res.json(); } catch (e) { data = { error: "The server's answer could not be read." }; }
  if (!res.ok) {
    const error = new Error(data && data.error ? data.error : "The server answered " + res.status + ".");
    error.data = data;
    throw error;
  }
  return data;
}

function showDate(iso) {
  const m = /^(\d{4})-(\d{2})-(\d{2})$/.exec(iso || "");
  return m ? Number(m[3]) + " " + MONTHS[Number(m[2]) - 1] + " " + m[1] : "";
}

function showError(message) {
  $("error").textContent = message;
  $("error").hidden = !message;
}

// --- the catalogue -------------------------------------------------------------------------

function drawCatalogue() {
  const words = $("search").value.toLowerCase().split(/\s+/).filter(Boolean);
  const list = $("catalogue");
  list.replaceChildren();
  let area = null;
  let shown = 0;
  const sorted = [...state.reports].sort((a, b) =>
    a.area.localeCompare(b.area) || a.caption.localeCompare(b.caption));
  for (const report of sorted) {
    const text = (report.caption + " " + report.key + " " + report.area).toLowerCase();
    if (!words.every((w) => text.includes(w))) continue;
    if (report.area !== area) {
      area = report.area;
      list.append(el("div", { className: "area", textContent: area }));
    }
    const link = el("a", { href: "#/" + encodeURIComponent(report.key), title: report.key },
      report.caption, el("span", { className: "key", textContent: report.key }));
    link.dataset.key = report.key;
    if (report.key === state.key) {
      link.className = "chosen";
      requestAnimationFrame(() => link.scrollIntoView({ block: "nearest" }));
    }
    list.append(link);
    shown++;
  }
  if (!shown) list.append(el("div", { className: "none", textContent: "No report matches." }));
}

// --- the form --------------------------------------------------------------------------------

function hintFor(entry) {
  const parts = [];
  if (entry.prompt && entry.prompt !== entry.caption) parts.push(entry.prompt);
  if (entry.kind === "date" && entry.default !== null && entry.default !== undefined) {
    const resolved = showDate(entry.resolvedDefault);
    parts.push("Default " + entry.default + (resolved && resolved !== showDate(entry.default) ? " = " + resolved : ""));
  }
  if (entry.kind === "sqllist") parts.push("Codes and ranges, e.g. A100..A199, B7; blank for all");
  return parts.join(" · ");
}

function makeField(entry) {
  const id = "p-" + entry.name;
  const field = { entry, dirty: false, input: null, hint: null };
  const wrap = el("div", { className: "field" });
  wrap.dataset.name = entry.name;
  const hint = el("div", { className: "hint", textContent: hintFor(entry) });
  field.hint = hint;
  field.baseHint = hint.textContent;
  const caption = el("label", { className: "caption", htmlFor: id, textContent: entry.caption });
  if (entry.help) caption.title = entry.help;
  const dirty = () => { field.dirty = true; };

  if (entry.kind === "boolean") {
    wrap.className = "field check";
    const box = el("input", { type: "checkbox", id, checked: entry.value === true });
    box.addEventListener("change", dirty);
    wrap.append(el("label", {}, box, entry.caption), hint);
    field.input = box;
    field.read = () => box.checked;
  } else if (entry.kind === "list" || entry.kind === "multilist") {
    const select = el("select", { id, multiple: entry.kind === "multilist" });
    if (entry.kind === "list") select.append(el("option", { value: "", textContent: "" }));
    const chosen = String(entry.value ?? entry.default ?? "").split(",").map((s) => s.trim().toLowerCase());
    for (const choice of entry.choices || []) {
      select.append(el("option", { value: choice, textContent: choice, selected: chosen.includes(choice.toLowerCase()) }));
    }
    select.addEventListener("change", dirty);
    wrap.append(caption, select, hint);
    field.input = select;
    field.read = () => entry.kind === "list" ? select.value
      : [...select.selectedOptions].map((o) => o.value);
  } else {
    const input = el("input", { type: "text", id, value: entry.value ?? "" });
    if (entry.kind === "date") {
      input.placeholder = entry.default ?? "dd/mm/yyyy or EOM, BOY+1Y-1D …";
      input.addEventListener("input", () => { dirty(); scheduleResolve(); });
    } else {
      if (entry.default !== null && entry.default !== undefined) input.placeholder = String(entry.default);
      input.addEventListener("input", dirty);
    }
    field.input = input;
    field.read = () => input.value;
    if (entry.kind === "sqllist") {
      const pick = el("button", { type: "button", textContent: "Pick…", title: "Choose from the list" });
      const row = el("div", { className: "picker-row" }, input, pick);
      wrap.append(caption, row, hint);
      pick.addEventListener("click", () => togglePicker(field, wrap));
    } else {
      wrap.append(caption, input, hint);
    }
  }
  field.wrap = wrap;
  return field;
}

function togglePicker(field, wrap) {
  if (field.picker) {
    field.picker.remove();
    field.picker = null;
    return;
  }
  const search = el("input", { type: "search", placeholder: "Search codes and names…" });
  const list = el("ul");
  const more = el("div", { className: "more" });
  const picker = el("div", { className: "picker" }, search, list, more);
  field.picker = picker;
  wrap.append(picker);
  let timer = null;
  const load = async () => {
    try {
      const data = await api("/api/reports/" + encodeURIComponent(state.key) + "/parameters/" +
        encodeURIComponent(field.entry.name) + "/rows?limit=200&search=" + encodeURIComponent(search.value));
      list.replaceChildren(...data.rows.map((row) => {
        const item = el("li", { title: "Add " + row.key },
          el("span", { className: "code", textContent: row.key }),
          el("span", { className: "name", textContent: row.description.trim() }));
        item.addEventListener("click", () => addCode(field, row.key));
        return item;
      }));
      more.textContent = data.total > data.rows.length ? (data.total - data.rows.length) + " more; narrow the search" :
        (data.total ? "" : "Nothing matches.");
    } catch (e) {
      more.textContent = e.message;
    }
  };
  search.addEventListener("input", () => { clearTimeout(timer); timer = setTimeout(load, 200); });
  load();
  search.focus();
}

function addCode(field, code) {
  const quoted = /[,"]|\.\./.test(code) ? '"' + code.replace(/"/g, '""') + '"' : code;
  const now = field.input.value.trim();
  field.input.value = now ? now + ", " + quoted : quoted;
  field.dirty = true;
}

function values() {
  const out = {};
  for (const field of state.fields) {
    if (!field.dirty) continue;
    const value = field.read();
    out[field.entry.name] = value === "" && field.entry.kind === "date" ? null : value;
  }
  return out;
}

let resolveTimer = null;
function scheduleResolve() {
  clearTimeout(resolveTimer);
  resolveTimer = setTimeout(resolveDates, 250);
}

// Shows beside each date what it resolves to, and the problems of the values as they stand.
async function resolveDates() {
  const key = state.key;
  let data;
  try {
    data = await api("/api/reports/" + encodeURIComponent(key) + "/resolve", { values: values() });
  } catch (e) {
    return;
  }
  if (key !== state.key) return;
  for (const field of state.fields) {
    if (field.entry.kind !== "date") continue;
    const problem = data.errors.find((m) => m.startsWith(field.entry.caption + ":") || m.startsWith(field.entry.name + ":"));
    field.hint.classList.toggle("bad", Boolean(problem));
    if (problem) field.hint.textContent = problem;
    else if (field.dirty && field.input.value.trim()) field.hint.textContent = "= " + (showDate(data.values[field.entry.name]) || "no date");
    else field.hint.textContent = field.baseHint;
  }
}

async function openReport(key) {
  stopPolling();
  state.key = key;
  state.run = null;
  drawCatalogue();
  $("welcome").hidden = true;
  $("report").hidden = false;
  $("form-box").open = true;
  $("viewer").hidden = true;
  $("warnings").hidden = true;
  $("progress").hidden = true;
  $("cancel").hidden = true;
  $("run").disabled = true;
  showError("");
  $("fields").replaceChildren(el("div", { className: "hint", textContent: "Loading…" }));
  const known = state.reports.find((r) => r.key === key);
  $("report-title").textContent = known ? known.caption : key;
  try {
    const data = await api("/api/reports/" + encodeURIComponent(key) + "/parameters?limit=1");
    if (key !== state.key) return;
    state.report = data;
    $("report-title").replaceChildren(data.caption, el("span", { className: "key", textContent: data.key }));
    state.fields = data.parameters.map(makeField);
    $("fields").replaceChildren(...state.fields.map((f) => f.wrap));
    if (!state.fields.length) $("fields").append(el("div", { className: "hint", textContent: "This report asks nothing: press Run." }));
    $("run").disabled = false;
  } catch (e) {
    $("fields").replaceChildren();
    showError(e.message);
  }
}

// --- running and the preview -----------------------------------------------------------------

function stopPolling() {
  clearTimeout(state.poll);
  state.poll = null;
}

async function startRun(event) {
  event.preventDefault();
  await runWith(state.key, values());
}

async function runWith(key, runValues) {
  stopPolling();
  showError("");
  $("warnings").hidden = true;
  $("viewer").hidden = true;
  try {
    const run = await api("/api/runs", { key, values: runValues });
    state.run = run;
    $("run").disabled = true;
    $("cancel").hidden = false;
    $("progress").hidden = false;
    drawProgress(run);
    state.poll = setTimeout(poll, 250);
  } catch (e) {
    showError(e.message);
  }
}

function drawProgress(run) {
  const label = $("progress").querySelector(".label");
  if (run.state === "queued") label.textContent = "Waiting for a free worker (" + (run.queuePosition || 1) + " in line)…";
  else label.textContent = "Running… page " + run.pages + ", " + run.rows.toLocaleString() + " rows";
}

async function poll() {
  const id = state.run && state.run.id;
  if (!id) return;
  let run;
  try {
    run = await api("/api/runs/" + id);
  } catch (e) {
    finishRun();
    showError(e.message);
    return;
  }
  if (!state.run || state.run.id !== id) return;
  state.run = run;
  if (run.state === "queued" || run.state === "running") {
    drawProgress(run);
    state.poll = setTimeout(poll, 400);
    return;
  }
  finishRun();
  if (run.state === "failed") showError(run.error || "The report failed.");
  else if (run.state === "cancelled") showError("The run was cancelled.");
  if (run.warnings && run.warnings.length) {
    $("warnings").replaceChildren(el("b", { textContent: "The report printed, with these problems:" }),
      el("ul", {}, ...run.warnings.map((w) => el("li", { textContent: w }))));
    $("warnings").hidden = false;
  }
  if (run.state === "done") showViewer(run);
}

function finishRun() {
  stopPolling();
  $("run").disabled = false;
  $("cancel").hidden = true;
  $("progress").hidden = true;
}

async function cancelRun() {
  if (!state.run) return;
  try { await api("/api/runs/" + state.run.id + "/cancel", {}); } catch (e) { showError(e.message); }
}

function showViewer(run) {
  $("viewer").hidden = false;
  $("pages").textContent = run.pages;
  $("page").max = run.pages;
  $("summary").textContent = run.pages + (run.pages === 1 ? " page, " : " pages, ") +
    run.rows.toLocaleString() + (run.rows === 1 ? " row" : " rows") + " · " + run.seconds.toFixed(1) + "s";
  const links = DOWNLOADS.filter(([format]) => run.formats.includes(format)).map(([format, label]) => {
    const link = el("a", { href: "/api/runs/" + run.id + "/files/" + format, textContent: label, title: "Download " + label });
    link.setAttribute("download", "");
    link.dataset.format = format;
    return link;
  });
  $("downloads").replaceChildren(...links);
  goTo(1);
  // The preview takes the room; the parameters are one click away.
  $("form-box").open = false;
}

function goTo(page) {
  const run = state.run;
  if (!run || run.state !== "done" || !run.pages) return;
  state.page = Math.min(Math.max(1, page | 0), run.pages);
  $("page").value = state.page;
  $("page-image").src = "/api/runs/" + run.id + "/pages/" + state.page;
  $("page-image").alt = "Page " + state.page + " of " + run.pages;
  drawLinks(run.id, state.page);
  $("first").disabled = $("prev").disabled = state.page <= 1;
  $("last").disabled = $("next").disabled = state.page >= run.pages;
}

// The page's figures that open another report: clickable areas over the image, placed in
// fractions of the page so that they follow the zoom.
async function drawLinks(id, page) {
  $("page-links").replaceChildren();
  let data;
  try {
    data = await api("/api/runs/" + id + "/pages/" + page + "/links");
  } catch (e) {
    return;
  }
  if (!state.run || state.run.id !== id || state.page !== page) return;
  const pct = (f) => (f * 100).toFixed(3) + "%";
  $("page-links").replaceChildren(...data.links.map((link) => {
    const area = el("a", { href: "#/" + encodeURIComponent(link.key), title: "Open " + link.key });
    area.style.left = pct(link.left);
    area.style.top = pct(link.top);
    area.style.width = pct(link.width);
    area.style.height = pct(link.height);
    area.dataset.key = link.key;
    area.addEventListener("click", (e) => {
      e.preventDefault();
      drill(link);
    });
    return area;
  }));
}

// Opens the linked report and runs it at once with the link's values.
async function drill(link) {
  history.pushState(null, "", "#/" + encodeURIComponent(link.key));
  await openReport(link.key);
  if (state.key === link.key && state.report) await runWith(link.key, link.values);
}

function applyZoom() {
  const zoom = $("zoom").value;
  const image = $("page-image");
  $("sheet").classList.toggle("fit", zoom === "fit");
  image.style.width = zoom === "fit" || !image.naturalWidth ? "" : Math.round(image.naturalWidth * Number(zoom)) + "px";
}

// --- wiring ------------------------------------------------------------------------------------

function route() {
  const key = decodeURIComponent(location.hash.replace(/^#\/?/, ""));
  if (key && key !== state.key) openReport(key);
}

async function start() {
  $("search").addEventListener("input", drawCatalogue);
  $("search").addEventListener("keydown", (e) => {
    if (e.key !== "Enter") return;
    const first = $("catalogue").querySelector("a");
    if (first) location.hash = "#/" + encodeURIComponent(first.dataset.key);
  });
  $("form").addEventListener("submit", startRun);
  $("cancel").addEventListener("click", cancelRun);
  $("first").addEventListener("click", () => goTo(1));
  $("prev").addEventListener("click", () => goTo(state.page - 1));
  $("next").addEventListener("click", () => goTo(state.page + 1));
  $("last").addEventListener("click", () => goTo(state.run ? state.run.pages : 1));
  $("page").addEventListener("change", () => goTo(Number($("page").value)));
  $("zoom").addEventListener("change", applyZoom);
  $("page-image").addEventListener("load", applyZoom);
  document.addEventListener("keydown", (e) => {
    if (e.target.tagName === "INPUT" || e.target.tagName === "SELECT" || $("viewer").hidden) return;
    if (e.key === "PageDown" || e.key === "ArrowRight") goTo(state.page + 1);
    if (e.key === "PageUp" || e.key === "ArrowLeft") goTo(state.page - 1);
  });
  window.addEventListener("hashchange", route);
  try {
    state.reports = (await api("/api/reports")).reports;
  } catch (e) {
    $("catalogue").replaceChildren(el("div", { className: "none", textContent: e.message }));
    return;
  }
  drawCatalogue();
  route();
}

start();

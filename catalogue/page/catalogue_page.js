// catalogue_page.js - the page: what is asked for, what is shown, and what presses and keys do.
"use strict";

const model = new CatalogueModel(catalogueData);
const byId = id => document.getElementById(id);
const kAnything = {search: "", category: -1, figure: -1, rank: -1, folder: -1, reason: ""};

// view: "poses" or "left". found: what the list shows, as indices of poses or of files left out.
// selected: place in found, -1: none. liked: the pose that others are like; -1: none.
const state = {view: "poses", wanted: {...kAnything}, found: [], selected: -1, liked: -1,
  areas: new Array(kAreaCount).fill(true), details: false};

// ---- the lists

function poseShape(width) {
  const gap = width < 480 ? 10 : 14, columns = Math.max(2, Math.floor((width + gap) / ((width < 480 ? 132 : 164) + gap)));
  return {columns, gap, height: Math.floor((width - gap * (columns - 1)) / columns) + 58};
}

function pairShape(width) {
  const columns = Math.max(1, Math.floor(width / 430));
  return {columns, gap: 10, height: width < 480 ? 98 : 116};
}

function mark(cell, index) {
  cell.id = "item-" + index;
  cell.setAttribute("aria-selected", index === state.selected);
  cell.setAttribute("aria-posinset", index + 1);
  cell.setAttribute("aria-setsize", state.found.length);
}

const list = new VirtualList(byId("list"), {});

// The one list shows cells of either kind.
function showKind(view) {
  if (list.view === view)
    return;
  const [make, fill, measure] = view === "poses" ? [makePoseCell, fillPoseCell, poseShape]
    : [makePairCell, fillPairCell, pairShape];
  list.clear();
  Object.assign(list, {view, make, measure});
  list.fill = (cell, index) => { fill(cell, model, state.found[index]); mark(cell, index); };
}

// ---- showing

function find() {
  if (state.view === "left")
    return model.leftOutFor(state.wanted);
  const found = model.posesFor(state.wanted);
  if (state.liked >= 0)
    return model.sortByLikeness(found, state.liked, state.areas);
  model.likeness = null;
  return found;
}

function number(count, one, many) {
  return count.toLocaleString("en-GB") + " " + (count === 1 ? one : many);
}

function statusText() {
  const left = state.view === "left", all = left ? model.leftOut.name.length : model.poses.name.length;
  const count = state.found.length, [one, many] = left ? ["file left out", "files left out"] : ["pose", "poses"];
  const text = count === all ? number(all, one, many) : count.toLocaleString("en-GB") + " of " + number(all, one, many);
  const missed = model.data.missedFolders.length;
  return (model.data.complete ? text : text + " \u00b7 pictures are still being made")
    + (left && missed ? " \u00b7 " + number(missed, "folder", "folders") + " could not be read" : "");
}

function showFilters() {
  const {wanted} = state;
  const counts = (skip, of) => {
    const found = model.posesFor(wanted, skip);
    return value => Number(value) < 0 || skip === "category" && value === "0" ? found.length : found.filter(of(Number(value))).length;
  };
  if (state.view === "poses") {
    const {poses} = model;
    showChoices(byId("filter-category"), wanted.category, counts("category", bit => i => poses.categories[i] >> bit & 1));
    showChoices(byId("filter-figure"), wanted.figure, counts("figure", male => i => poses.male[i] === male));
    showChoices(byId("filter-rank"), wanted.rank, counts("rank", rank => i => poses.rank[i] === rank));
  } else {
    const found = model.leftOutFor(wanted, "reason");
    showChoices(byId("filter-reason"), wanted.reason,
      reason => reason ? found.filter(i => model.leftOut.reason[i] === reason).length : found.length);
  }
  const on = state.view === "left" ? Number(wanted.reason !== "")
    : ["category", "figure", "rank", "folder"].filter(name => wanted[name] >= 0).length;
  byId("filters-on").textContent = on || "";
  byId("clear").hidden = on === 0;
}

function showLike() {
  const {poses} = model, on = state.view === "poses" && state.liked >= 0;
  byId("like").hidden = !on;
  if (!on)
    return;
  byId("like-name").textContent = poses.name[state.liked];
  byId("like-picture").hidden = !poses.picture[state.liked];
  byId("like-picture").src = poses.picture[state.liked] || "data:,";
  [...byId("areas").querySelectorAll("input")].forEach((input, area) => input.checked = state.areas[area]);
}

function showChip() {
  const folder = state.view === "poses" ? model.data.folders[state.wanted.folder] : undefined;
  byId("folder-chip").hidden = folder === undefined;
  byId("folder-chip").textContent = folder === undefined ? "" : (lastFolder(folder) || "no folder") + " \u2715";
}

// After any change of what is asked for. keep: what was selected stays so where it is still found.
function show(keep = false) {
  const kept = keep ? state.found[state.selected] : undefined;
  for (const [view, tab] of [["poses", "tab-poses"], ["left", "tab-left"]])
    byId(tab).setAttribute("aria-selected", state.view === view);
  document.querySelectorAll(".poses-only").forEach(e => e.hidden = state.view !== "poses");
  document.querySelectorAll(".left-only").forEach(e => e.hidden = state.view !== "left");
  byId("list").setAttribute("aria-label", state.view === "poses" ? "Poses" : "Files left out");
  state.found = find();
  state.selected = kept === undefined ? -1 : state.found.indexOf(kept);
  showLike();
  showChip();
  showFilters();
  byId("status").textContent = statusText();
  byId("nothing").hidden = state.found.length > 0;
  byId("list").hidden = state.found.length === 0;
  showKind(state.view);
  list.show(state.found.length);
  if (state.selected >= 0)
    list.bringIntoView(state.selected);
  tellSelected();
  showDetails();
}

function showDetails() {
  const panel = byId("details"), item = state.found[state.selected];
  panel.hidden = !state.details || item === undefined;
  if (panel.hidden)
    return;
  const close = () => closeDetails();
  if (state.view === "poses")
    fillPoseDetails(panel, model, item, {close, like: () => like(item), folder: () => onlyFolder(item)});
  else
    fillLeftOutDetails(panel, model, item, {close, show: () => showPartner(item)});
}

// ---- doing

function select(index, {details = state.details} = {}) {
  state.selected = Math.max(0, Math.min(state.found.length - 1, index));
  state.details = details;
  showDetails();
  list.layout(); // the details take room
  list.bringIntoView(state.selected);
  for (const [at, cell] of list.cells)
    mark(cell, at);
  tellSelected();
}

function tellSelected() {
  if (state.selected < 0)
    byId("list").removeAttribute("aria-activedescendant");
  else
    byId("list").setAttribute("aria-activedescendant", "item-" + state.selected);
}

function closeDetails() {
  state.details = false;
  byId("details").hidden = true;
  list.layout();
  byId("list").focus();
}

function isWide() {
  return matchMedia("(min-width: 1081px)").matches;
}

function like(pose) {
  state.liked = pose;
  state.wanted = {...kAnything, figure: state.wanted.figure};
  byId("search").value = "";
  state.details = state.details && isWide();
  show();
  select(0);
  byId("list").focus();
}

function endLike() {
  const pose = state.liked;
  state.liked = -1;
  show();
  select(state.found.indexOf(pose), {details: false});
  byId("list").focus();
}

function onlyFolder(pose) {
  want({folder: model.poses.folder[pose]});
  state.details = state.details && isWide();
  select(Math.max(0, state.found.indexOf(pose)));
  byId("list").focus();
}

// Of a file that is left out: the pose, or the other file, that is named in its stead.
function showPartner(i) {
  const {files, index} = model.partner(i);
  state.liked = -1;
  goTo(files === model.poses ? "poses" : "left");
  select(state.found.indexOf(index), {details: true});
  byId("list").focus();
}

function goTo(view) {
  uncoverList();
  state.view = view;
  state.wanted = {...kAnything};
  byId("search").value = "";
  show();
}

function want(change) {
  Object.assign(state.wanted, change);
  show(true);
}

function clearAll() {
  byId("search").value = "";
  state.wanted = {...kAnything};
  show(true);
}

function openFilters(open) {
  byId("filters").classList.toggle("open", open);
  byId("filters-button").setAttribute("aria-expanded", open);
}

// On a narrow screen details and filters lie over the list: who searches wants to see what is found.
function uncoverList() {
  if (!matchMedia("(max-width: 760px)").matches)
    return;
  openFilters(false);
  state.details = false;
  showDetails();
}

// Details would lie over the filters there.
function toggleFilters() {
  const open = !byId("filters").classList.contains("open");
  uncoverList();
  openFilters(open);
}

// One step back: filters, details, likeness, search and filters.
function goBack() {
  if (byId("filters").classList.contains("open"))
    openFilters(false);
  else if (!byId("details").hidden)
    closeDetails();
  else if (state.view === "poses" && state.liked >= 0)
    endLike();
  else
    clearAll();
  if (document.activeElement === byId("search"))
    byId("list").focus();
}

// ---- presses and keys

function pressCell(event) {
  const cell = event.target.closest(".cell");
  if (!cell)
    return;
  select(Number(cell.dataset.index), {details: true});
  byId("list").focus();
}

function pressKey(event) {
  if (event.ctrlKey || event.metaKey || event.altKey)
    return;
  const typing = event.target === byId("search");
  if (event.key === "/" && !typing) {
    byId("search").focus();
    byId("search").select();
  } else if (event.key === "Escape") {
    goBack();
  } else if (typing && (event.key === "Enter" || event.key === "ArrowDown") && state.found.length) {
    uncoverList();
    byId("list").focus();
    select(Math.max(0, state.selected));
  } else if (event.target === byId("list") && !pressListKey(event.key)) {
    return;
  } else if (event.target !== byId("list")) {
    return;
  }
  event.preventDefault();
}

// Whether the key means something to the list.
function pressListKey(key) {
  const step = list.stepOf(key);
  if (step !== null)
    select(state.selected < 0 && Number.isFinite(step) ? 0 : state.selected + step);
  else if (key === "Enter")
    select(Math.max(0, state.selected), {details: true});
  else if (key.toLowerCase() === "l" && state.view === "poses" && state.selected >= 0)
    like(state.found[state.selected]);
  else
    return false;
  return true;
}

// ---- the start

function makeAreas() {
  kAreas.forEach((name, area) => {
    const label = make("label", "area", name), input = make("input");
    input.type = "checkbox";
    input.addEventListener("change", () => { state.areas[area] = input.checked; show(); });
    label.append(input);
    byId("areas").append(label);
  });
}

function makeFilters() {
  const rows = names => [{value: -1, text: "Any"}, ...names.map((text, value) => ({value, text}))];
  makeChoices(byId("filter-category"), "category", rows(kCategoryNames).filter(({value}) => value),
    value => want({category: value}));
  makeChoices(byId("filter-figure"), "figure", rows(kFigureNames), value => want({figure: value}));
  makeChoices(byId("filter-rank"), "rank", rows(kRankNames), value => want({rank: value}));
  makeChoices(byId("filter-reason"), "reason",
    [{value: "", text: "Any"}, ...Object.entries(kReasons).map(([value, {label}]) => ({value, text: label}))],
    value => want({reason: value}));
}

function start() {
  byId("count-poses").textContent = model.poses.name.length.toLocaleString("en-GB");
  byId("count-left").textContent = model.leftOut.name.length.toLocaleString("en-GB");
  makeAreas();
  makeFilters();
  byId("tab-poses").addEventListener("click", () => goTo("poses"));
  byId("tab-left").addEventListener("click", () => goTo("left"));
  byId("search").addEventListener("input", event => { uncoverList(); want({search: event.target.value}); });
  byId("clear").addEventListener("click", () => want({...kAnything, search: state.wanted.search}));
  byId("nothing-clear").addEventListener("click", clearAll);
  byId("like-end").addEventListener("click", endLike);
  byId("folder-chip").addEventListener("click", () => want({folder: -1}));
  byId("filters-button").addEventListener("click", toggleFilters);
  byId("list").addEventListener("click", pressCell);
  document.addEventListener("keydown", pressKey);
  show();
}

start();

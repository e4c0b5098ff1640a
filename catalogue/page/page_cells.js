// page_cells.js - what the page is put together from. Every text of a file goes through textContent.
"use strict";

function make(tag, className = "", text = "") {
  const element = document.createElement(tag);
  if (className)
    element.className = className;
  if (text)
    element.textContent = text;
  return element;
}

function makeButton(text, className, press) {
  const button = make("button", className, text);
  button.type = "button";
  button.addEventListener("click", press);
  return button;
}

// ---- pictures

function makePlate() {
  const plate = make("div", "plate");
  const image = make("img");
  image.alt = "";
  image.decoding = "async";
  // A cell that is used again does not show the last one's picture until its own is there.
  image.addEventListener("load", () => image.style.visibility = "");
  plate.append(image, make("span", "none"));
  return plate;
}

function fillPlate(plate, picture, alt = "", none = "no picture") {
  const [image, words] = plate.children;
  image.alt = alt;
  image.hidden = !picture;
  plate.classList.toggle("empty", !picture);
  words.textContent = picture ? "" : none;
  words.hidden = Boolean(picture);
  if (picture && image.getAttribute("src") !== picture) {
    image.style.visibility = "hidden";
    image.src = picture;
  }
}

// ---- cells of the lists

function lastFolder(folder) {
  return folder.slice(folder.lastIndexOf("/") + 1);
}

function makeCell(kind) {
  const cell = make("div", "cell " + kind);
  cell.setAttribute("role", "option");
  return cell;
}

function makePoseCell() {
  const cell = makeCell("pose"), plate = makePlate(), names = make("div", "names");
  const mark = make("span", "mark", "\u2605");
  mark.title = "Favourite";
  plate.append(mark, make("span", "percent"));
  names.append(make("div", "name"), make("div", "folder"));
  cell.append(plate, names);
  return cell;
}

function fillPoseCell(cell, model, pose) {
  const {poses} = model, [plate, names] = cell.children, [, , mark, percent] = plate.children;
  const folder = model.folder(poses, pose);
  fillPlate(plate, poses.picture[pose]);
  mark.hidden = kRankNames[poses.rank[pose]] !== "Favourite";
  percent.hidden = !model.likeness || model.likeness[pose] < 0;
  percent.textContent = percent.hidden ? "" : percentText(model.likeness[pose]);
  names.children[0].textContent = poses.name[pose];
  names.children[1].textContent = lastFolder(folder) || "\u00a0";
  cell.title = folder ? folder + "/" + poses.name[pose] : poses.name[pose];
}

function percentText(likeness) {
  return (likeness * 100).toFixed(1) + " %";
}

function makePairCell() {
  const cell = makeCell("pair"), plates = make("div", "plates"), words = make("div", "words");
  plates.append(makePlate(), makePlate());
  words.append(make("div", "name"), make("div", "reason"), make("div", "folder"));
  cell.append(plates, words);
  return cell;
}

function reasonText(model, i) {
  const {label} = kReasons[model.leftOut.reason[i]], partner = model.partner(i);
  return partner ? label + " " + partner.files.name[partner.index] : label;
}

function fillPairCell(cell, model, i) {
  const {leftOut} = model, [plates, words] = cell.children, partner = model.partner(i);
  fillPlate(plates.children[0], leftOut.picture[i]);
  plates.children[1].hidden = !partner;
  fillPlate(plates.children[1], partner ? partner.files.picture[partner.index] : "");
  words.children[0].textContent = leftOut.name[i];
  words.children[1].textContent = reasonText(model, i);
  words.children[2].textContent = model.folder(leftOut, i);
}

// ---- details

function addFacts(parent, facts) {
  const list = make("dl");
  for (const [name, value, className] of facts) {
    const row = make("div");
    row.append(make("dt", "", name), make("dd", className || "", value));
    list.append(row);
  }
  parent.append(list);
}

function detailsTop(title, close) {
  const top = make("div", "top");
  top.append(make("span", "", title), makeButton("Close", "close", close));
  return top;
}

function captionedPlate(files, i, caption) {
  const figure = make("div"), plate = makePlate();
  fillPlate(plate, files.picture[i], caption ? caption + ": " + files.name[i] : files.name[i]);
  figure.append(plate);
  if (caption)
    figure.append(make("p", "", caption + ": " + files.name[i]));
  return figure;
}

// does: {close, like, folder}
function fillPoseDetails(panel, model, pose, does) {
  const {poses} = model, plate = makePlate(), actions = make("div", "actions");
  const folder = model.folder(poses, pose), rank = kRankNames[poses.rank[pose]];
  fillPlate(plate, poses.picture[pose], poses.name[pose]);
  if (model.hasSignature(pose))
    actions.append(makeButton("Like this one", "first", does.like));
  actions.append(makeButton("Only this folder", "", does.folder));
  panel.replaceChildren(detailsTop("Pose", does.close), plate, make("h2", "", poses.name[pose]), actions);
  const facts = [["Folder", folder || "\u2013"], ["Figure", kFigureNames[poses.male[pose]]],
    ["Categories", model.categoriesOf(pose).join(", ") || "none"],
    ["Rank", rank === "Favourite" ? "\u2605 Favourite" : rank], ["File", model.fullPath(poses, pose), "path"]];
  if (model.likeness && model.likeness[pose] >= 0)
    facts.unshift(["Likeness", percentText(model.likeness[pose])]);
  addFacts(panel, facts);
}

// does: {close, show}
function fillLeftOutDetails(panel, model, i, does) {
  const {leftOut} = model, partner = model.partner(i), actions = make("div", "actions");
  const pictures = make("div", partner ? "two" : "");
  if (partner || leftOut.picture[i])
    pictures.append(captionedPlate(leftOut, i, partner ? "This file" : ""));
  if (partner)
    pictures.append(captionedPlate(partner.files, partner.index, "Kept instead"));
  panel.replaceChildren(detailsTop("Left out", does.close), pictures, make("h2", "", leftOut.name[i]),
    make("p", "reason", reasonText(model, i)), make("p", "", kReasons[leftOut.reason[i]].why));
  if (partner)
    actions.append(makeButton(partner.files === model.poses ? "Show the pose" : "Show that file", "first", does.show));
  panel.append(actions);
  const facts = [["Folder", model.folder(leftOut, i) || "\u2013"], ["File", model.fullPath(leftOut, i), "path"]];
  if (partner)
    facts.push([kReasons[leftOut.reason[i]].label, model.fullPath(partner.files, partner.index), "path"]);
  addFacts(panel, facts);
}

// ---- filters

// A group of radio buttons in the fieldset: rows of {value, text}; count(value) tells how many match.
function makeChoices(fieldset, name, rows, choose) {
  for (const {value, text} of rows) {
    const label = make("label", "choice"), input = make("input");
    input.type = "radio";
    input.name = name;
    input.value = value;
    input.addEventListener("change", () => choose(value));
    label.append(input, make("span", "", text), make("span", "number"));
    fieldset.append(label);
  }
}

function showChoices(fieldset, chosen, count) {
  for (const label of fieldset.querySelectorAll(".choice")) {
    const input = label.firstElementChild, number = count(input.value);
    input.checked = input.value === String(chosen);
    label.lastElementChild.textContent = number.toLocaleString("en-GB");
    label.classList.toggle("none", number === 0);
  }
}

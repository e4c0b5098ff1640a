// catalogue_model.js - what the catalogue holds and which of it is asked for. Nothing of the page.
"use strict";

const kCategoryNames = ["All", "Sitting", "Standing", "Lying on the back", "Lying on the belly",
  "Lying on left side", "Lying on right side", "Upside down"]; // by bit
const kFigureNames = ["Female", "Male"];
const kRankNames = ["Unranked", "Favourite", "Hidden", "Custom library"];

// In the order in which they are offered. label: before a partner's name or alone.
const kReasons = {
  "similar-to": {label: "Similar to", why: "It differs too little from a pose that is in the catalogue."},
  "mirror-of": {label: "Mirror of", why: "It is a pose of the catalogue with left and right exchanged."},
  "same-content": {label: "Same content as", why: "It is a copy of a file that was found before."},
  "makers-variant": {label: "Maker\u2019s variant", why: "It is the maker\u2019s own mirrored or expressionless copy of a pose."},
  "not-whole-body": {label: "Part of the body", why: "It poses a part only, such as the hands or the face."},
  "other-figure": {label: "Other figure", why: "It is a pose of another generation of figures."},
  "not-a-pose": {label: "Not a pose", why: "It is a preset of another kind, such as a shape or a material."},
  "unreadable": {label: "Unreadable", why: "The file could not be read."},
  "over-capacity": {label: "Over capacity", why: "The Pose Finder holds 65,536 poses and had no room for it."},
};

function bytesOf(base64) {
  const text = atob(base64), bytes = new Uint8Array(text.length);
  for (let i = 0; i < text.length; ++i)
    bytes[i] = text.charCodeAt(i);
  return bytes;
}

// Words in any case and with any accents.
function plain(text) {
  return text.normalize("NFD").replace(/[\u0300-\u036f]/g, "").toLowerCase();
}

class CatalogueModel {
  constructor(data) {
    this.data = data;
    this.poses = data.poses;
    this.leftOut = data.leftOut;
    this.images = imagesOf(new Float32Array(bytesOf(data.poses.signatures).buffer));
    this.poseTexts = this.searchTexts(data.poses);
    this.leftOutTexts = this.searchTexts(data.leftOut);
    this.likeness = null; // by pose, while poses are sorted by it
    this.known = {of: "", likeness: null}; // the one computed last
  }

  searchTexts(files) {
    const folders = this.data.folders.map(plain);
    return files.name.map((name, i) => plain(name) + "\n" + folders[files.folder[i]]);
  }

  folder(files, i) {
    return this.data.folders[files.folder[i]];
  }

  fullPath(files, i) {
    const directory = this.data.directories[files.directory[i]];
    return directory === undefined ? files.path[i] : directory + "/" + files.path[i];
  }

  hasSignature(pose) {
    return !Number.isNaN(this.images[pose * kPoseImages]);
  }

  categoriesOf(pose) {
    const bits = this.poses.categories[pose];
    return kCategoryNames.filter((_, bit) => bit > 0 && bits >> bit & 1);
  }

  // Where the partner of a file that is left out is told: {files, index}; null: it has none.
  partner(i) {
    const number = this.leftOut.partner[i];
    if (number === -1)
      return null;
    return number < -1 ? {files: this.leftOut, index: -2 - number} : {files: this.poses, index: number};
  }

  // wanted: search, category, figure, rank (each -1: any), folder (-1: any).
  // Of the filters that skip names, nothing is asked.
  posesFor(wanted, skip = "") {
    const {category, male, rank, folder, categories} = {
      category: skip === "category" ? -1 : wanted.category, male: skip === "figure" ? -1 : wanted.figure,
      rank: skip === "rank" ? -1 : wanted.rank, folder: wanted.folder, categories: this.poses.categories};
    const words = plain(wanted.search).split(/\s+/).filter(Boolean);
    const found = [];
    for (let i = 0; i < categories.length; ++i)
      if ((category < 1 || categories[i] >> category & 1) && (male < 0 || this.poses.male[i] === male)
          && (rank < 0 || this.poses.rank[i] === rank) && (folder < 0 || this.poses.folder[i] === folder)
          && words.every(word => this.poseTexts[i].includes(word)))
        found.push(i);
    return found;
  }

  leftOutFor(wanted, skip = "") {
    const reason = skip === "reason" ? "" : wanted.reason;
    const words = plain(wanted.search).split(/\s+/).filter(Boolean);
    const found = [];
    for (let i = 0; i < this.leftOutTexts.length; ++i)
      if ((!reason || this.leftOut.reason[i] === reason)
          && words.every(word => this.leftOutTexts[i].includes(word)))
        found.push(i);
    return found;
  }

  // Computed anew only for another pose or other areas, and not for each letter of a search.
  likenessOf(chosen, areaFlags) {
    const of = chosen + " " + areaFlags.join();
    if (this.known.of !== of)
      this.known = {of, likeness: likenessTo(this.images, chosen, areaFlags)};
    return this.known.likeness;
  }

  // The most alike first, those without a signature last.
  sortByLikeness(found, chosen, areaFlags) {
    this.likeness = this.likenessOf(chosen, areaFlags);
    const keys = this.likeness;
    const order = Uint32Array.from(found);
    order.sort((a, b) => keys[b] - keys[a] || (b === chosen) - (a === chosen) || a - b);
    return Array.from(order);
  }
}

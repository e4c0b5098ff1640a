// virtual_list.js - a list of many cells of one size, of which only those in view are in the page.
"use strict";

const kCellsAhead = 2; // rows above and below those in view

class VirtualList {
  // scroller: what scrolls; it gets the cells. make(): a new cell. fill(cell, index): shows another
  // item in it. measure(width): {columns, height, gap} for a width in pixels.
  constructor(scroller, {make, fill, measure}) {
    Object.assign(this, {scroller, make, fill, measure, count: 0, cells: new Map(), spare: []});
    this.space = document.createElement("div");
    this.space.className = "space";
    this.space.setAttribute("role", "presentation");
    scroller.append(this.space);
    scroller.addEventListener("scroll", () => this.render(), {passive: true});
    new ResizeObserver(() => this.layout()).observe(scroller);
    this.shape = {columns: 1, height: 100, gap: 0};
  }

  // No items, and no cells to be used again.
  clear() {
    this.count = 0;
    for (const index of [...this.cells.keys()])
      this.drop(index);
    this.spare = [];
  }

  // Other items, from the top.
  show(count) {
    this.count = count;
    for (const index of [...this.cells.keys()])
      this.drop(index);
    this.scroller.scrollTop = 0;
    this.layout();
  }

  layout() {
    const style = getComputedStyle(this.scroller);
    const width = this.scroller.clientWidth - parseFloat(style.paddingLeft) - parseFloat(style.paddingRight);
    if (width <= 0 || !this.measure)
      return; // not in view, or nothing shown yet
    this.shape = this.measure(width);
    this.cellWidth = (width - this.shape.gap * (this.shape.columns - 1)) / this.shape.columns;
    const rows = Math.ceil(this.count / this.shape.columns);
    this.space.style.height = Math.max(0, rows * (this.shape.height + this.shape.gap) - this.shape.gap) + "px";
    for (const [index, cell] of this.cells)
      this.place(cell, index);
    this.render();
  }

  place(cell, index) {
    const {columns, height, gap} = this.shape;
    cell.style.width = this.cellWidth + "px";
    cell.style.height = height + "px";
    cell.style.transform = `translate(${index % columns * (this.cellWidth + gap)}px, `
      + `${Math.floor(index / columns) * (height + gap)}px)`;
  }

  drop(index) {
    const cell = this.cells.get(index);
    this.cells.delete(index);
    cell.remove();
    this.spare.push(cell);
  }

  render() {
    const {columns, height, gap} = this.shape;
    const top = this.scroller.scrollTop, bottom = top + this.scroller.clientHeight;
    const firstRow = Math.max(0, Math.floor(top / (height + gap)) - kCellsAhead);
    const lastRow = Math.floor(bottom / (height + gap)) + kCellsAhead;
    const first = firstRow * columns, end = Math.min(this.count, (lastRow + 1) * columns);
    for (const index of [...this.cells.keys()])
      if (index < first || index >= end)
        this.drop(index);
    for (let index = first; index < end; ++index)
      if (!this.cells.has(index))
        this.add(index);
  }

  add(index) {
    const cell = this.spare.pop() || this.make();
    this.cells.set(index, cell);
    cell.dataset.index = index;
    this.fill(cell, index);
    this.place(cell, index);
    this.space.append(cell);
  }

  bringIntoView(index) {
    const {columns, height, gap} = this.shape;
    const style = getComputedStyle(this.scroller);
    const top = Math.floor(index / columns) * (height + gap);
    const room = this.scroller.clientHeight - parseFloat(style.paddingTop) - parseFloat(style.paddingBottom);
    if (top < this.scroller.scrollTop)
      this.scroller.scrollTop = top;
    else if (top + height > this.scroller.scrollTop + room)
      this.scroller.scrollTop = top + height - room;
    this.render();
  }

  // How far a key moves on; null for a key that moves nowhere.
  stepOf(key) {
    const {columns, height, gap} = this.shape;
    const page = Math.max(1, Math.floor(this.scroller.clientHeight / (height + gap))) * columns;
    const steps = {ArrowLeft: -1, ArrowRight: 1, ArrowUp: -columns, ArrowDown: columns, PageUp: -page,
      PageDown: page, Home: -Infinity, End: Infinity};
    return key in steps ? steps[key] : null;
  }
}

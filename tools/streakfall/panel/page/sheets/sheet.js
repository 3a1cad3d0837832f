// A sheet of thumbnails in place of the picture. Its tiles keep their places while they are drawn
// anew, and are drawn one after another.
import { find, make } from '../core/dom.js';
import { model } from '../core/model.js';
import { tell } from '../core/notice.js';
import { picture } from '../core/session.js';
import { fill } from '../stage/paint.js';

const thumbnailWidth = 320; // about; pixels
let drawing = new AbortController();
let opener = null;

/** A tile: {canvas, button}; `draw` is the request of its picture, `take` is called by a click. */
export function tile(take) {
  const effect = make('canvas', { ariaHidden: 'true' });
  const caption = make('span', { className: 'caption' });
  const button = make('button', { type: 'button', className: 'tile' },
    make('span', { className: 'thumbnail' }, effect), caption);
  button.addEventListener('click', async (event) => {
    await take(event);
    closeSheet();
  });
  return { button, effect, caption };
}

function divisor() {
  return Math.min(99, Math.max(1, Math.round(model.about.width / thumbnailWidth)));
}

// The input is the same on all tiles; the effect's transparent pictures go over it.
async function drawInput(sheet, signal) {
  if (!model.about.input) return;
  const ask = { frame: model.frame, divisor: divisor(), bare: true, slot: 'thumbnail' };
  const input = await picture(ask, signal);
  for (const place of sheet.querySelectorAll('.thumbnail')) {
    if (!place.querySelector('.under')) {
      place.prepend(make('canvas', { className: 'under', ariaHidden: 'true' }));
    }
    fill(place.querySelector('.under'), input);
  }
}

/** Draws the tiles of a sheet; resolves with their pictures, or null when something took over. */
export async function drawTiles(sheet, tiles, requestOf) {
  drawing.abort();
  drawing = new AbortController();
  const { signal } = drawing;
  const drawn = [];
  sheet.ariaBusy = 'true';
  try {
    await drawInput(sheet, signal);
    for (const [place, { effect }] of tiles.entries()) {
      const ask = { frame: model.frame, divisor: divisor(), slot: 'thumbnail', ...requestOf(place) };
      const made = await picture(ask, signal);
      fill(effect, made);
      drawn.push(made);
    }
    sheet.ariaBusy = 'false';
    return drawn;
  } catch (error) {
    if (error.name !== 'AbortError' && error.status !== 409) tell(error.message);
    return null;
  }
}

export function closeSheet() {
  drawing.abort();
  for (const sheet of document.querySelectorAll('.sheet')) sheet.hidden = true;
  for (const button of document.querySelectorAll('[aria-controls]')) button.ariaExpanded = 'false';
  opener?.focus();
  opener = null;
}

/** Opens a sheet, or closes it when it is open. Returns true when it opened. */
export function openSheet(id, button) {
  const wasOpen = !find(id).hidden;
  closeSheet();
  if (wasOpen) return false;
  opener = button;
  find(id).hidden = false;
  button.ariaExpanded = 'true';
  return true;
}

export const isSheetOpen = () => find('.sheet:not([hidden])') !== null;

export function beginSheets() {
  const { width, height } = model.about;
  document.documentElement.style.setProperty('--aspect', `${width} / ${height}`);
  for (const button of document.querySelectorAll('.sheet-close')) {
    button.addEventListener('click', closeSheet);
  }
}

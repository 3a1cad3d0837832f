// Lays pixels on canvases. The effect's canvas lies over the input's, so that one picture serves
// any background.
import { find } from '../core/dom.js';

/** Puts straight RGBA pixels into a canvas, which takes their size. */
export function fill(canvas, { width, height, pixels }) {
  if (canvas.width !== width || canvas.height !== height) {
    canvas.width = width;
    canvas.height = height;
  }
  canvas.getContext('2d', { willReadFrequently: true }).putImageData(
    new ImageData(pixels, width, height), 0, 0);
}

/** The frame's picture, and its input where there is a new one. */
export function paint(effect, input) {
  if (input) fill(find('#input'), input);
  fill(find('#effect'), effect);
}

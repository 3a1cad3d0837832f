// Zoom and pan by pointer, wheel, keys and buttons.
import { find, followPointer } from '../core/dom.js';
import { fit, pan, view, viewChanged, watchSize, zoomTo } from './view.js';

const stepOut = 1.25; // a step of the keys and buttons
const panStep = 40; // stage pixels
const pans = { ArrowLeft: [1, 0], ArrowRight: [-1, 0], ArrowUp: [0, 1], ArrowDown: [0, -1] };

const zoomIn = () => zoomTo(view.zoom * stepOut);
const zoomOut = () => zoomTo(view.zoom / stepOut);
const wholePixels = () => zoomTo(1 / devicePixelRatio);

function byKey(event) {
  if (event.ctrlKey || event.metaKey || event.altKey || event.target !== find('#stage')) return;
  const way = pans[event.key];
  if (way) pan(way[0] * panStep, way[1] * panStep);
  else if (event.key === '+' || event.key === '=') zoomIn();
  else if (event.key === '-') zoomOut();
  else if (event.key === '0') fit();
  else if (event.key === '1') wholePixels();
  else return;
  event.preventDefault();
}

function byWheel(event) {
  event.preventDefault();
  const box = find('#stage').getBoundingClientRect();
  const at = [event.clientX - box.left, event.clientY - box.top];
  if (event.shiftKey) pan(-event.deltaY, -event.deltaX);
  else zoomTo(view.zoom * Math.exp(-event.deltaY / 400), at);
}

function byPointer(press) {
  if (press.button > 1 || press.target.closest('button')) return;
  let last = [press.clientX, press.clientY];
  find('#stage').classList.add('panning');
  followPointer(find('#stage'), press, (event) => {
    pan(event.clientX - last[0], event.clientY - last[1]);
    last = [event.clientX, event.clientY];
  }, () => find('#stage').classList.remove('panning'));
}

export function beginNavigation() {
  const stage = find('#stage');
  stage.addEventListener('keydown', byKey);
  stage.addEventListener('wheel', byWheel, { passive: false });
  stage.addEventListener('pointerdown', byPointer);
  stage.addEventListener('dblclick', (event) => event.target.closest('button') || fit());
  find('#zoom-fit').addEventListener('click', fit);
  find('#zoom-whole').addEventListener('click', wholePixels);
  find('#zoom-in').addEventListener('click', zoomIn);
  find('#zoom-out').addEventListener('click', zoomOut);
  viewChanged.on(() => {
    find('#zoom-shown').textContent = `${Math.round(view.zoom * devicePixelRatio * 100)} %`;
  });
  watchSize();
  fit();
}

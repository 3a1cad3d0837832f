// Something that happens, and those who want to hear of it.

export class Signal {
  #listeners = [];

  on(listener) {
    this.#listeners.push(listener);
  }

  emit(...what) {
    for (const listener of this.#listeners) listener(...what);
  }
}

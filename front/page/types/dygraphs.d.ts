// What the page uses of dygraphs, whose package has no types.
declare module "dygraphs/dygraph.min.js" {
    export type Row = [Date, ...(number | null)[]];
    export interface Options {
        [name: string]: unknown;
        file?: Row[];
    }
    export default class Dygraph {
        static PLUGINS: unknown[];
        static Plugins: Record<string, unknown>;
        constructor(element: HTMLElement, rows: Row[], options: Options);
        updateOptions(options: Options): void;
        resetZoom(): void;
        resize(): void;
        destroy(): void;
    }
}

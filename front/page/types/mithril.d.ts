// What the page uses of mithril, whose package has no types.
declare module "mithril" {
    function m(selector: string, ...rest: m.Children[]): m.Vnode;
    function m(selector: string, attributes: m.Attributes, ...rest: m.Children[]): m.Vnode;
    function m<A>(
        component: m.Component<A> | m.Closure<A>,
        attributes: A & { key?: string | number },
        ...rest: m.Children[]
    ): m.Vnode;

    namespace m {
        type Child = Vnode | string | number | boolean | null | undefined;
        type Children = Child | Children[];

        interface Vnode<A = unknown> {
            tag: unknown; // with it a vnode is never taken for attributes
            attrs: A;
            children: Children;
            dom?: Element;
        }
        interface DomVnode<A = unknown> extends Vnode<A> {
            dom: HTMLElement;
        }
        // An attribute that is false is taken away. One that is undefined stays as it was.
        interface Attributes {
            [name: string]: unknown;
            tag?: never;
            key?: string | number;
            oncreate?: (vnode: DomVnode) => void;
            onupdate?: (vnode: DomVnode) => void;
            onremove?: (vnode: DomVnode) => void;
        }
        interface Component<A = object> {
            oninit?: (vnode: Vnode<A>) => void;
            oncreate?: (vnode: DomVnode<A>) => void;
            onupdate?: (vnode: DomVnode<A>) => void;
            onremove?: (vnode: DomVnode<A>) => void;
            view: (vnode: Vnode<A>) => Children;
        }
        type Closure<A = object> = (vnode: Vnode<A>) => Component<A>;

        interface Resolver {
            render: (vnode: Vnode<Record<string, string>>) => Children;
        }
        interface Route {
            (root: Element, first: string, routes: Record<string, Resolver>): void;
            get(): string | undefined;
            set(path: string, data?: null, options?: { replace?: boolean }): void;
            prefix(prefix: string): void;
        }
        const route: Route;
        function mount(root: Element, component: Component | null): void;
        function redraw(): void;
    }
    export default m;
}
